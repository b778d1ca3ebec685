#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"

/// The window services that the editor uses. Back ends: win32/ (real windows) and offscreen/ (windows in
/// memory, with a clock and input that a test or the renderer controls). The editor uses only this header.
namespace Platform {

/// A window of the current back end; may belong to the host. Calls with null do nothing.
using WindowHandle = struct NativeWindow *;

// Bits of a modifier mask. Mouse events use all of them, key events Control and Shift only. Alt has no bit.
constexpr uint32_t kLeftButton = 1, kMiddleButton = 2, kRightButton = 4, kControl = 8, kShift = 16;

// Virtual-key codes: those of Windows on every system.
constexpr uint32_t kKeyBack = 8, kKeyTab = 9, kKeyReturn = 13, kKeyShift = 16, kKeyControl = 17, kKeyAlt = 18,
                   kKeyEscape = 27, kKeySpace = 32, kKeyPageUp = 33, kKeyPageDown = 34, kKeyEnd = 35,
                   kKeyHome = 36, kKeyLeft = 37, kKeyUp = 38, kKeyRight = 39, kKeyDown = 40, kKeyF2 = 113;

/// An event of a window. Members that a kind does not use are 0.
struct Event {
    enum class Kind : uint32_t {
        leftDown = 0, // the editor passes on the values 0 to 7 as mouse event numbers
        leftUp = 1,
        leftDouble = 2,
        rightDown = 3,
        rightUp = 4,
        rightDouble = 5,
        mouseMove = 6,
        wheel = 7,
        captureLost, // another window or the system has captured the mouse
        keyDown,
        keyUp,
        systemKeyDown, // with Alt
        systemKeyUp,
        character,
        focusIn,
        focusOut,
        paint,           // handled by beginPaint and endPaint, otherwise stays pending
        eraseBackground, // any result: nothing needs to be erased
        dialogCode,      // result: the keys that a host's dialog must pass to the window
        setCursor,       // any result: the cursor is already set
        help,
        timer,
        renderTick, // sent by sendRenderTick
        custom,     // posted by post
        destroyed
    };

    Kind kind;
    Point at{}; // mouse: in window coordinates
    uint32_t modifiers = 0;
    int32_t wheel = 0;     // 120 per notch, positive away from the user
    uint32_t key = 0;      // virtual key, or the code of a character
    bool repeated = false; // the key was down before
    uint32_t id = 0;       // timer number, or the code of a custom event

    bool isMouse() const { return kind <= Kind::wheel; }
};

/// Result for `dialogCode`: the window wants all keys.
constexpr intptr_t kWantsAllKeys = 4;

/// Receives a window's events. It may destroy the window while it handles one.
class WindowClient {
public:
    /// Returns the event's result; nullopt selects the system's default handling.
    virtual std::optional<intptr_t> onEvent(WindowHandle window, const Event &event) = 0;
    /// If false, mouse events go to the window underneath.
    virtual bool takesMouse() const { return true; }

protected:
    ~WindowClient() = default;
};

/// A target for pixels: a window's client area while it is painted.
class DeviceContext {
public:
    virtual ~DeviceContext() = default;
    /// Copies a part of a bitmap, without blending, so that its upper left corner is at `to`.
    virtual void copy(const Bitmap &from, const Rect &source, Point to) = 0;
};

/// A system font, reference-counted.
class Font {
public:
    virtual ~Font() = default;
};
using FontRef = std::shared_ptr<const Font>;

struct FontRequest {
    int32_t height; // pixels: negative for the em height, positive for the line height
    bool bold;
    std::string face;
};

struct TextSize {
    int32_t width = 0, height = 0; // pixels; the height is the line height
};

/// A mouse cursor, reference-counted.
class Cursor {
public:
    virtual ~Cursor() = default;
};
using CursorRef = std::shared_ptr<const Cursor>;

enum class CursorKind : uint32_t {
    arrow = 0,
    wait = 1,
    hand = 2,
    move = 3,
    diagonalUp = 4,
    vertical = 5,
    diagonalDown = 6,
    horizontal = 7,
    drag = 8 // the editor's own
};

struct WindowRequest {
    std::string className; // registered at first use
    std::string title;
    Rect place{}; // in the parent's client area
    WindowHandle parent = nullptr;
    WindowClient *client = nullptr;
    bool visible = true;
    bool clipSiblings = true, clipChildren = true;
    bool takesTab = false;    // WS_TABSTOP: a host's dialog may give it the focus
    bool arrowCursor = false; // of the class; otherwise the window sets the cursor itself
};

/// Position, contents and allowed characters of a text prompt.
struct PromptRequest {
    WindowHandle owner = nullptr;
    Point centre{};               // on the screen
    std::optional<int32_t> width; // of the field, pixels; default: the dialog's width
    std::string text;             // initial contents
    std::vector<char> allowed;    // other characters are dropped while the user types
};

/// Thread  the window thread, except post and sendRenderTick
/// Errors  a call that fails returns null, false or zeros and has no effect
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    // Windows.
    virtual WindowHandle createWindow(const WindowRequest &request) = 0;
    /// Also destroys its children. Each window gets a `destroyed` event first.
    virtual void destroyWindow(WindowHandle window) = 0;
    /// Returns false if the class is unknown or a window of it exists.
    virtual bool unregisterClass(const std::string &className) = 0;
    /// Sets the receiver of the window's events; null: none.
    virtual void setClient(WindowHandle window, WindowClient *client) = 0;
    virtual WindowClient *client(WindowHandle window) const = 0;
    virtual void moveWindow(WindowHandle window, const Rect &place, bool repaint) = 0;
    virtual void showWindow(WindowHandle window, bool activate) = 0;
    virtual void hideWindow(WindowHandle window) = 0;
    virtual void raiseWindow(WindowHandle window) = 0;
    virtual WindowHandle focus() const = 0;
    virtual void setFocus(WindowHandle window) = 0;
    virtual void captureMouse(WindowHandle window) = 0;
    virtual void releaseMouse() = 0;
    /// Sets the opacity of the top-level window that contains this one, 255 for opaque. Has no effect if that
    /// is the host's main window.
    virtual void setOpacity(WindowHandle window, uint8_t opacity) = 0;

    // Painting. Rectangles are in window coordinates.
    virtual void invalidate(WindowHandle window, const OptionalRect &area, bool erase) = 0;
    virtual void validate(WindowHandle window, const OptionalRect &area) = 0;
    /// Paints the window and all its children at once.
    virtual void redrawAll(WindowHandle window) = 0;
    /// Handles a paint event: returns the target and stores the area to paint in `clip`. Null on failure.
    virtual std::unique_ptr<DeviceContext> beginPaint(WindowHandle window, Rect &clip) = 0;
    virtual void endPaint(WindowHandle window, std::unique_ptr<DeviceContext> context) = 0;
    /// For painting outside paint events; the context's destructor releases it.
    virtual std::unique_ptr<DeviceContext> windowContext(WindowHandle window) = 0;

    // Timers and messages.
    virtual bool setTimer(WindowHandle window, uint32_t id, uint32_t periodMs) = 0;
    virtual void killTimer(WindowHandle window, uint32_t id) = 0;
    /// Any thread: queues a `custom` event with this code and returns at once.
    virtual void post(WindowHandle window, uint32_t code) = 0;
    /// Any thread: sends a `renderTick` and waits until it is handled, the window is destroyed, or a time
    /// limit passes if the back end has one.
    virtual void sendRenderTick(WindowHandle window) = 0;
    /// Releases a thread that waits in sendRenderTick, also if its tick is being handled.
    virtual void serveRenderTicks(WindowHandle window) = 0;
    /// Milliseconds; wraps, compare by unsigned difference.
    virtual uint32_t milliseconds() const = 0;

    // Keys, by virtual-key code.
    /// At the time of the event being handled.
    virtual bool isKeyDown(uint32_t key) const = 0;
    /// At the time of the call.
    virtual bool isKeyDownNow(uint32_t key) const = 0;

    // The pointer, in screen coordinates.
    virtual std::optional<Point> pointer() const = 0;
    virtual void setPointer(Point at) = 0;
    /// Upper left corner of the window including its border.
    virtual std::optional<Point> windowOrigin(WindowHandle window) const = 0;
    virtual Point toScreen(WindowHandle window, Point at) const = 0;
    virtual CursorRef loadCursor(CursorKind kind) = 0;
    virtual void showCursor(const CursorRef &cursor) = 0;

    // Text. Strings are UTF-16.
    virtual FontRef createFont(const FontRequest &request) = 0;
    /// Draws on a `colour` bitmap with a transparent background. `at` is the upper left corner of the text,
    /// or the upper right one if `alignRight`.
    virtual void drawText(Bitmap &to, const Font &font, uint32_t colour, Point at, std::u16string_view text,
                          bool alignRight) = 0;
    virtual TextSize measureText(const Font &font, std::u16string_view text) = 0;
    /// Loads a string from the module's resources; empty if there is none.
    virtual std::u16string loadString(uint32_t id) = 0;
    /// Shows a text field and waits. Returns its contents, or nullopt if the user cancels.
    virtual std::optional<std::string> promptText(const PromptRequest &request) = 0;
};

/// The current window system. Call it only if hasWindowSystem() returns true.
WindowSystem &windowSystem();
bool hasWindowSystem();
/// Replaces the window system, so that the renderer and the tests can draw into memory. `system` must outlive
/// its use; null restores the operating system's.
void useWindowSystem(WindowSystem *system);

} // namespace Platform
