#pragma once
#include <vector>

#include "PluginBase/Util/Reflected.h"
#include "platform/WindowSystem.h"

class TransformHandle;

namespace UI::Native {

class FrameBase;

/// Base class of everything visible in the editor. Each control has a native window and receives the system's
/// events through the virtual functions below, in its own coordinates. To avoid flicker, controls draw into a
/// surface and paint() copies a part of it to the screen.
/// State     constructed -> native window created -> shown or hidden -> destroyed, by its owner or by the system
/// Ownership a window owns its child windows; the frame owns the windows without a parent
/// Thread    window thread
class WindowBase : public Reflected<WindowBase, Object>, public Platform::WindowClient {
public:
    static constexpr const char *kClassName = "UI::Native::WindowBase";

    WindowBase(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName);
    ~WindowBase() override;

    // Event handlers for subclasses. They return true if they handled the event. `mods` is a modifier mask.

    virtual void onShow() {}
    virtual void onHide() {}
    /// Copies the part of the control's picture inside `clip` to the screen.
    virtual void paint(Platform::DeviceContext & /*dc*/, const Rect & /*clip*/) {}
    virtual void onGeometryChanged() {}
    virtual void onFocusIn();
    virtual void onFocusOut();
    /// Called when an outside change, such as a hidden focus mark, requires a redraw.
    virtual void onEnableChanged() {}
    virtual bool onMouseDown(Point, uint32_t /*mods*/) { return false; }
    virtual bool onMouseUp(Point, uint32_t /*mods*/) { return false; }
    /// Called when another window takes the mouse capture during a drag; ends the drag.
    virtual void onCaptureLost() { onMouseUp({}, 0); }
    virtual bool onDoubleClick(Point, uint32_t /*mods*/) { return false; }
    virtual bool onRightDown(Point, uint32_t /*mods*/) { return false; }
    virtual bool onRightUp(Point, uint32_t /*mods*/) { return false; }
    virtual bool onRightDoubleClick(Point, uint32_t /*mods*/) { return false; }
    /// Called only while a button is down, unless `wantsAllMoves` is true.
    virtual bool onMouseMove(Point, uint32_t /*mods*/) { return false; }
    /// `delta`: 120 per notch.
    virtual bool onWheel(Point, int32_t /*delta*/, uint32_t /*mods*/) { return false; }
    virtual bool onKeyDown(uint32_t /*key*/, uint32_t /*mods*/, bool /*wasDown*/) { return false; }
    virtual bool onKeyUp(uint32_t /*key*/, uint32_t /*mods*/) { return false; }
    virtual bool onChar(uint32_t /*code*/, uint32_t /*mods*/, bool /*repeated*/) { return false; }
    virtual void onTimer(uint32_t /*id*/) {}

    /// In the parent's coordinates. Ignored if a side is not positive.
    void setGeometry(int32_t x, int32_t y, int32_t width, int32_t height);
    void show(bool activate);
    void hide();
    /// Raises the window above its siblings.
    void raise();
    bool hasFocus() const;
    void setFocus();
    /// Requests a paint of `area`, or of the whole window by default. An empty rectangle requests nothing.
    void invalidate(const OptionalRect &area = {});
    /// Paints before it returns.
    void repaintNow(const OptionalRect &area = {});
    void setCursor(const Platform::CursorRef &shape);

    static WindowBase *fromHandle(Platform::WindowHandle window);
    /// The components that the controls operate.
    const TransformHandle &transform() const;

    FrameBase &getFrame() const { return *frame; }
    Platform::WindowHandle nativeHandle() const { return handle; }
    WindowBase *parentWindow() const { return parent; }
    int32_t width() const { return geometry.width(); }
    int32_t height() const { return geometry.height(); }
    /// Converts a point in this window to frame coordinates.
    Point toFrame(Point at) const { return at + Point{frameX, frameY}; }
    /// The window's rectangle in frame coordinates.
    Rect frameRect() const { return Rect::at({frameX, frameY}, width(), height()); }
    bool isVisible() const { return visible; }
    static int32_t liveWindows() { return liveCount; }

    // Signals and slots.
    void sigReceivedFocus() { emitSignal<&WindowBase::sigReceivedFocus>(); }
    void sigLostFocus() { emitSignal<&WindowBase::sigLostFocus>(); }
    /// Emitted when the user changes the control's value with a key.
    void sigResetFocusTimer() { emitSignal<&WindowBase::sigResetFocusTimer>(); }
    void slotSetFocus() { setFocus(); }
    using Signals = MetaRows<Meta<&WindowBase::sigReceivedFocus>, Meta<&WindowBase::sigLostFocus>,
                             Meta<&WindowBase::sigResetFocusTimer>>;
    using Slots = MetaRows<Meta<&WindowBase::slotSetFocus>>;

    std::optional<intptr_t> onEvent(Platform::WindowHandle window, const Platform::Event &event) override;
    /// Offers a mouse event to this window, then to its parents until one handles it.
    std::optional<intptr_t> handleMouse(const Platform::Event &event);
    std::optional<intptr_t> handleKey(const Platform::Event &event);
    /// Calls the handler for one mouse event, in this window's coordinates.
    bool dispatchMouse(Platform::Event::Kind kind, Point at, uint32_t mods, int32_t delta);

protected:
    void createNative(const String &windowName, bool makeHandle);
    bool isHit(Point at) const { return Rect::at({}, width(), height()).contains(at); }

    Platform::WindowHandle handle = nullptr;
    FrameBase *const frame;
    WindowBase *const parent;
    bool ownsHandle = true;
    std::vector<WindowBase *> childWindows; // owned
    bool windowDestroying = false;
    bool visible = true;
    bool focusable = true;
    Rect geometry{0, 0, 0, 0};
    int32_t frameX, frameY; // of the upper left corner
    bool wantsAllMoves = false;
    Platform::CursorRef cursor; // empty: the arrow
    bool focusSignals = false;

private:
    friend class FrameBase;
    bool dispatchMove(Point at, uint32_t mods);
    void updateFramePosition();
    std::optional<intptr_t> handlePaint();

    static inline int32_t liveCount = 0;
};

} // namespace UI::Native
