#pragma once
#include <functional>
#include <memory>
#include <vector>

#include "platform/WindowSystem.h"
#include "tests/host/ResourceUsage.h"

/// A simulated desktop: a host window, a mouse and a keyboard. Tests run on offscreen windows and on real Windows
/// windows. Positions are relative to the host window's client area. Input has been processed when a call returns.
class Desk {
public:
    static std::unique_ptr<Desk> make(int32_t width = 547, int32_t height = 488);
    virtual ~Desk() = default;

    virtual Platform::WindowHandle window() const = 0;
    /// Destroys the host window before the editor is closed.
    virtual void destroyWindow() = 0;
    /// Screenshot of the client area. Format: 0xRRGGBB
    virtual Platform::Bitmap shot() = 0;

    virtual void moveTo(Point at) = 0;
    virtual void press() = 0;
    virtual void release() = 0;
    virtual void doubleClick() = 0;
    virtual void wheel(int32_t delta) = 0;
    virtual void keyDown(uint32_t key) = 0;
    virtual void keyUp(uint32_t key) = 0;
    /// Lets time pass and processes all pending events.
    virtual void wait(uint32_t ms) = 0;
    /// Types `text` into the next prompt, then confirms or cancels it.
    virtual void answerPrompt(const char *text, bool confirm) = 0;
    /// Runs once while the next prompt is open, before it is answered.
    std::function<void()> whilePrompted;
    /// Resource usage of the process, with "windows", "timers" and "graphics" (GDI objects) where available.
    virtual ResourceUsage resourceUsage() const = 0;

    /// Pixels of shot(). Shape: [height][width]
    std::vector<uint32_t> pixels()
    {
        const Platform::Bitmap picture = shot();
        const auto *const first = static_cast<const uint32_t *>(picture.pixels());
        return {first, first + picture.width() * picture.height()};
    }
    void click(Point at, std::initializer_list<uint32_t> held = {})
    {
        moveTo(at);
        for (const uint32_t key : held) keyDown(key);
        press();
        release();
        for (const uint32_t key : held) keyUp(key);
    }
    void drag(Point from, Point to)
    {
        moveTo(from);
        press();
        moveTo(to);
        release();
    }
    void type(uint32_t key)
    {
        keyDown(key);
        keyUp(key);
    }
};

/// Holds keys down during its lifetime.
class Held {
public:
    Held(Desk &where, std::initializer_list<uint32_t> which) : desk(where), keys(which)
    {
        for (const uint32_t key : keys) desk.keyDown(key);
    }
    ~Held()
    {
        for (const uint32_t key : keys) desk.keyUp(key);
    }
    Held(const Held &) = delete;
    Held &operator=(const Held &) = delete;

private:
    Desk &desk;
    const std::vector<uint32_t> keys;
};
