#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"

/// The window services that the editor is built on. Back ends: win32/ (real windows), offscreen/ (windows in
/// memory, with a clock and an input that a test or the renderer drives). The toolkit above knows this file
/// and no other.
namespace Platform {

/// A native window of the back end in use, a host's included; null is none, and calls on it do nothing.
using WindowHandle = struct NativeWindow *;

// Bits of a modifier mask. Mouse events carry all of them, key events the last two; Alt is never in it.
constexpr uint32_t kLeftButton = 1, kMiddleButton = 2, kRightButton = 4, kControl = 8, kShift = 16;

// Virtual-key numbers, those of Windows on every system.
constexpr uint32_t kKeyBack = 8, kKeyTab = 9, kKeyReturn = 13, kKeyShift = 16, kKeyControl = 17, kKeyAlt = 18,
                   kKeyEscape = 27, kKeySpace = 32, kKeyPageUp = 33, kKeyPageDown = 34, kKeyEnd = 35,
                   kKeyHome = 36, kKeyLeft = 37, kKeyUp = 38, kKeyRight = 39, kKeyDown = 40, kKeyF2 = 113;

/// Something that happened to a window. Members that an event does not use are 0.
struct Event {
    enum class Kind : uint32_t {
        leftDown = 0, // the first eight in the toolkit's own numbering of mouse events
        leftUp = 1,
        leftDouble = 2,
        rightDown = 3,
        rightUp = 4,
        rightDouble = 5,
        mouseMove = 6,
        wheel = 7,
        captureLost, // another window took the mouse, or the system did
        keyDown,
        keyUp,
        systemKeyDown, // with Alt
        systemKeyUp,
        character,
        focusIn,
        focusOut,
        paint,           // answered between beginPaint and endPaint, or left pending
        eraseBackground, // any answer means that nothing needs to be erased
        dialogCode,      // which keys a host's dialog shall leave to the window
        setCursor,       // any answer means that the cursor is right as it is
        help,
        timer,
        renderTick, // sent by sendRenderTick
        custom,     // posted by post
        destroyed
    };

    Kind kind;
    Point at{}; // mouse: in the window's own pixels
    uint32_t modifiers = 0;
    int32_t wheel = 0;     // 120 a notch, positive away from the user
    uint32_t key = 0;      // virtual key, or the code of a character
    bool repeated = false; // the key was down before
    uint32_t id = 0;       // of a timer, or the code of a custom event

    bool isMouse() const { return kind <= Kind::wheel; }
};

/// Keys that a window asks for when it answers `dialogCode`: all of them.
constexpr intptr_t kWantsAllKeys = 4;

/// Whoever a window's events are meant for. It may destroy the window while it answers.
class WindowClient {
public:
    /// The event's result; nothing leaves it to the system's own reaction.
    virtual std::optional<intptr_t> onEvent(WindowHandle window, const Event &event) = 0;
    /// Without, the mouse works what lies beneath the window.
    virtual bool takesMouse() const { return true; }

protected:
    ~WindowClient() = default;
};

/// A target that pixels are copied to: a window's client area while it is painted.
class DeviceContext {
public:
    virtual ~DeviceContext() = default;
    /// Copies a part of a bitmap, as it is, to `to`.
    virtual void copy(const Bitmap &from, const Rect &source, Point to) = 0;
};

/// A font of the system; held by reference count.
class Font {
public:
    virtual ~Font() = default;
};
using FontRef = std::shared_ptr<const Font>;

struct FontRequest {
    int32_t height; // pixels: negative for that of the letters, positive for that of a line
    bool bold;
    std::string face;
};

struct TextSize {
    int32_t width = 0, height = 0; // pixels; height of a line
};

/// A shape of the mouse pointer; held by reference count.
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
    std::string className; // registered at first use; windows of one name share their events' treatment
    std::string title;
    Rect place{}; // in the parent's client area
    WindowHandle parent = nullptr;
    WindowClient *client = nullptr;
    bool visible = true;
    bool clipSiblings = true, clipChildren = true;
    bool takesTab = false;    // WS_TABSTOP: hosts may give it the focus
    bool arrowCursor = false; // of the class; otherwise the window sets the cursor itself
};

/// What a text prompt shows and lets pass.
struct PromptRequest {
    WindowHandle owner = nullptr;
    Point centre{};               // on the screen
    std::optional<int32_t> width; // pixels of the field; else the dialog's own
    std::string text;             // to begin with
    std::vector<char> allowed;    // every other character is dropped as it is typed
};

/// Thread  the window thread, but for post and sendRenderTick
/// Errors  what fails gives null, false or zeros and does nothing else
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    // Windows.
    virtual WindowHandle createWindow(const WindowRequest &request) = 0;
    /// Its children go too; each is told `destroyed` first.
    virtual void destroyWindow(WindowHandle window) = 0;
    /// False, for instance, while a window of the class exists.
    virtual bool unregisterClass(const std::string &className) = 0;
    /// Who gets the events; null: nobody.
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
    /// Of the separate top-level window that holds this one, 255 for opaque; nothing happens where the editor
    /// sits in the host's own main window.
    virtual void setOpacity(WindowHandle window, uint8_t opacity) = 0;

    // Painting. Rectangles are in the window's own pixels.
    virtual void invalidate(WindowHandle window, const OptionalRect &area, bool erase) = 0;
    virtual void validate(WindowHandle window, const OptionalRect &area) = 0;
    /// Paints the window and all its children at once.
    virtual void redrawAll(WindowHandle window) = 0;
    /// Answers a paint event: what to paint on, and in `clip` where. Null if nothing can be painted.
    virtual std::unique_ptr<DeviceContext> beginPaint(WindowHandle window, Rect &clip) = 0;
    virtual void endPaint(WindowHandle window, std::unique_ptr<DeviceContext> context) = 0;
    /// For painting between the paint events; given back by its end.
    virtual std::unique_ptr<DeviceContext> windowContext(WindowHandle window) = 0;

    // Timers and messages.
    virtual bool setTimer(WindowHandle window, uint32_t id, uint32_t periodMs) = 0;
    virtual void killTimer(WindowHandle window, uint32_t id) = 0;
    /// Any thread, never waits: the window gets a `custom` event with this code in its turn.
    virtual void post(WindowHandle window, uint32_t code) = 0;
    /// Any thread: returns when the window has answered a `renderTick`, or has gone, or is at it for too long.
    virtual void sendRenderTick(WindowHandle window) = 0;
    /// Lets a thread go that waits in sendRenderTick, also for a tick that is being handled.
    virtual void serveRenderTicks(WindowHandle window) = 0;
    /// Milliseconds; wraps, compare by unsigned difference.
    virtual uint32_t milliseconds() const = 0;

    // Keys, by virtual key.
    /// As of the event being answered.
    virtual bool isKeyDown(uint32_t key) const = 0;
    /// As of this moment.
    virtual bool isKeyDownNow(uint32_t key) const = 0;

    // The pointer, in screen coordinates.
    virtual std::optional<Point> pointer() const = 0;
    virtual void setPointer(Point at) = 0;
    /// Upper left corner of the window, its border included, on the screen.
    virtual std::optional<Point> windowOrigin(WindowHandle window) const = 0;
    virtual Point toScreen(WindowHandle window, Point at) const = 0;
    virtual CursorRef loadCursor(CursorKind kind) = 0;
    virtual void showCursor(const CursorRef &cursor) = 0;

    // Text. Strings are UTF-16.
    virtual FontRef createFont(const FontRequest &request) = 0;
    /// Draws on a bitmap of 32-bit pixels, without a ground. `at` is the upper left, or upper right, corner.
    virtual void drawText(Bitmap &to, const Font &font, uint32_t colour, Point at, std::u16string_view text,
                          bool alignRight) = 0;
    virtual TextSize measureText(const Font &font, std::u16string_view text) = 0;
    /// A string of the module's own table; empty if there is none.
    virtual std::u16string loadString(uint32_t id) = 0;
    /// Shows a field to type in, and waits. The text when the user confirmed it.
    virtual std::optional<std::string> promptText(const PromptRequest &request) = 0;
};

/// The one in use. It is there only where hasWindowSystem() says so.
WindowSystem &windowSystem();
bool hasWindowSystem();
/// Puts another in its place, for as long as the object lives; the renderer's and the tests' way to draw
/// into memory. Null: the system's own.
void useWindowSystem(WindowSystem *system);

} // namespace Platform
