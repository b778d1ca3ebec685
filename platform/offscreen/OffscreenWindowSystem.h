#pragma once
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "platform/WindowSystem.h"

namespace Platform {

/// Windows in memory. Input and time come only from calls by the owner, which simulates the user and the
/// clock. Every window has its own pixels; a screenshot composes them as a screen does.
/// Thread  one, except post and sendRenderTick
class OffscreenWindowSystem final : public WindowSystem {
public:
    OffscreenWindowSystem();
    ~OffscreenWindowSystem() override;

    // Actions of the host.

    /// Creates a parent window for an editor, its corner at `origin` on the screen.
    WindowHandle makeHostWindow(int32_t width, int32_t height, Point origin = {});
    /// Advances the clock: fires timers as they become due and calls pump() after each.
    void advance(uint32_t ms);
    /// Handles posted events, waiting ticks and paint requests, except those that threads add meanwhile.
    void pump();
    /// A window and its children as the screen shows them, 0xRRGGBB.
    Bitmap screenshot(WindowHandle window) const;

    // Actions of the user. Each calls pump().

    /// In screen coordinates.
    void movePointer(Point at);
    void pressButton(uint32_t button = kLeftButton);
    void releaseButton(uint32_t button = kLeftButton);
    /// Presses and releases the left button, sends the second press as `leftDouble`, and releases again.
    void doubleClick();
    void turnWheel(int32_t delta);
    void pressKey(uint32_t key);
    void releaseKey(uint32_t key);
    void typeKey(uint32_t key)
    {
        pressKey(key);
        releaseKey(key);
    }
    /// Takes the mouse capture from its window, as a dialog of the host does.
    void stealMouse();

    /// Returns the string that the user enters in a prompt, or nullopt to cancel. Default: cancel.
    std::function<std::optional<std::string>(const PromptRequest &)> onPrompt;

    // State for tests.

    struct PaintRecord {
        WindowHandle window;
        Rect area; // in window coordinates
    };
    std::vector<PaintRecord> paints; // grows until the reader clears it
    const std::string &title(WindowHandle window) const;
    /// In screen coordinates; empty if the window does not exist or is hidden.
    Rect screenRect(WindowHandle window) const;
    std::vector<WindowHandle> children(WindowHandle window) const;
    bool isVisible(WindowHandle window) const;
    size_t windowCount() const { return windows.size(); }
    size_t timerCount() const { return timers.size(); }
    CursorKind shownCursor() const { return cursorKind; }
    std::optional<uint8_t> opacity() const { return shownOpacity; }

    // WindowSystem.
    WindowHandle createWindow(const WindowRequest &request) override;
    void destroyWindow(WindowHandle window) override;
    bool unregisterClass(const std::string &className) override;
    void setClient(WindowHandle window, WindowClient *client) override;
    WindowClient *client(WindowHandle window) const override;
    void moveWindow(WindowHandle window, const Rect &place, bool repaint) override;
    void showWindow(WindowHandle window, bool activate) override;
    void hideWindow(WindowHandle window) override;
    void raiseWindow(WindowHandle window) override;
    WindowHandle focus() const override { return focused; }
    void setFocus(WindowHandle window) override;
    void captureMouse(WindowHandle window) override;
    void releaseMouse() override;
    void setOpacity(WindowHandle window, uint8_t opacity) override;
    void invalidate(WindowHandle window, const OptionalRect &area, bool erase) override;
    void validate(WindowHandle window, const OptionalRect &area) override;
    void redrawAll(WindowHandle window) override;
    std::unique_ptr<DeviceContext> beginPaint(WindowHandle window, Rect &clip) override;
    void endPaint(WindowHandle window, std::unique_ptr<DeviceContext> context) override;
    std::unique_ptr<DeviceContext> windowContext(WindowHandle window) override;
    bool setTimer(WindowHandle window, uint32_t id, uint32_t periodMs) override;
    void killTimer(WindowHandle window, uint32_t id) override;
    void post(WindowHandle window, uint32_t code) override;
    void sendRenderTick(WindowHandle window) override;
    void serveRenderTicks(WindowHandle window) override;
    uint32_t milliseconds() const override { return now; }
    bool isKeyDown(uint32_t key) const override { return keysDown.contains(key); }
    bool isKeyDownNow(uint32_t key) const override { return keysDown.contains(key); }
    std::optional<Point> pointer() const override { return pointerAt; }
    void setPointer(Point at) override;
    std::optional<Point> windowOrigin(WindowHandle window) const override;
    Point toScreen(WindowHandle window, Point at) const override;
    CursorRef loadCursor(CursorKind kind) override;
    void showCursor(const CursorRef &cursor) override;
    FontRef createFont(const FontRequest &request) override;
    void drawText(Bitmap &to, const Font &font, uint32_t colour, Point at, std::u16string_view text,
                  bool alignRight) override;
    TextSize measureText(const Font &font, std::u16string_view text) override;
    std::u16string loadString(uint32_t id) override;
    std::optional<std::string> promptText(const PromptRequest &request) override;

private:
    struct Window;
    struct Timer {
        WindowHandle window;
        uint32_t id, period, due; // ms
    };
    struct Message {
        WindowHandle window;
        uint32_t code;
        bool *answered; // set when a tick's thread may continue; null for a posted event
    };
    class Fonts;

    Window *find(WindowHandle window) const;
    std::optional<intptr_t> deliver(WindowHandle window, Event event);
    void deliverMouse(Event::Kind kind, int32_t wheel = 0);
    WindowHandle windowAt(Point screen) const;
    WindowHandle windowAt(const Window &window, Point at) const;
    uint32_t modifiers() const;
    bool serveMessage(const std::function<bool(const Message &)> &wanted = {});
    bool paintNext();
    void invalidateTree(WindowHandle window);
    void draw(const Window &window, Point at, const Rect &clip, Bitmap &to) const;
    void dropMessages(WindowHandle window);

    std::map<WindowHandle, std::unique_ptr<Window>> windows;
    std::set<std::string> classes;
    std::vector<Timer> timers;
    std::set<uint32_t> keysDown;
    uint32_t buttonsDown = 0; // bits of a modifier mask
    uint32_t now = 1000;      // ms; not 0, which some code uses for "never"
    Point pointerAt{-1, -1};
    bool pointerMoved = false; // by setPointer, mouse event still pending
    WindowHandle focused = nullptr, captured = nullptr;
    CursorKind cursorKind = CursorKind::arrow;
    std::optional<uint8_t> shownOpacity;
    uintptr_t lastNumber = 0; // counts windows, so that no handle is reused
    std::unique_ptr<Fonts> fontLibrary;

    mutable std::mutex messageMutex; // guards the members below
    std::condition_variable messageServed;
    std::deque<Message> messages;
    std::vector<bool *> answering; // ticks being handled whose threads still wait
};

} // namespace Platform
