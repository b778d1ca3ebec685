#pragma once
#include <functional>
#include <memory>
#include <vector>

#include "platform/WindowSystem.h"
#include "tests/host/Holdings.h"

/// A host's window on a screen, with a person in front of it: the same for windows in memory and for real
/// ones, so that one test runs on both. Places are in the host window's client area. What the person does has
/// been handled when the call returns.
class Desk {
public:
    static std::unique_ptr<Desk> make(int32_t width = 547, int32_t height = 488);
    virtual ~Desk() = default;

    virtual Platform::WindowHandle window() const = 0;
    /// As the host does when it is closed first.
    virtual void destroyWindow() = 0;
    /// What the screen shows of the client area, 0xRRGGBB.
    virtual Platform::Bitmap shot() = 0;

    virtual void moveTo(Point at) = 0;
    virtual void press() = 0;
    virtual void release() = 0;
    /// The second click of a double click follows the first at once.
    virtual void doubleClick() = 0;
    virtual void wheel(int32_t delta) = 0;
    virtual void keyDown(uint32_t key) = 0;
    virtual void keyUp(uint32_t key) = 0;
    /// Lets time pass and everything pending happen.
    virtual void wait(uint32_t ms) = 0;
    /// Types into the next text prompt, and confirms it or not.
    virtual void answerPrompt(const char *text, bool confirm) = 0;
    /// What else happens while the next prompt is open, before it is answered.
    std::function<void()> whilePrompted;
    /// With "windows", "timers" or "graphics" (bitmaps, fonts and contexts), where the system tells.
    virtual Holdings holdings() const = 0;

    /// As shot() has them, row by row.
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

/// Keys that are held for as long as the object lives.
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
