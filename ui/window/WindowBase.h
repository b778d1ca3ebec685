#pragma once
#include <vector>

#include "PluginBase/Util/Reflected.h"
#include "platform/WindowSystem.h"

class TransformHandle;

namespace UI::Native {

class FrameBase;

/// Root of everything that appears inside the editor. Each control is a native window of its own; events of
/// the system reach it as the virtual operations below, in its own pixels. A control composes its picture in
/// a surface; paint() copies a part of that to the screen, so nothing is ever drawn on the screen in pieces.
/// State     constructed -> native window made -> shown or hidden -> destroyed, by its owner or by the system
/// Ownership a window owns its child windows; the frame owns those without a parent
/// Thread    the window's
class WindowBase : public Reflected<WindowBase, Object>, public Platform::WindowClient {
public:
    static constexpr const char *kClassName = "UI::Native::WindowBase";

    WindowBase(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName);
    ~WindowBase() override;

    // What subclasses act on. Results tell whether the event was handled; `mods` is a modifier mask.

    virtual void onShow() {}
    virtual void onHide() {}
    /// Copies `clip` of the control's picture to the screen.
    virtual void paint(Platform::DeviceContext & /*dc*/, const Rect & /*clip*/) {}
    virtual void onGeometryChanged() {}
    virtual void onFocusIn();
    virtual void onFocusOut();
    /// The way the control looks has changed from outside: draw it anew.
    virtual void onEnableChanged() {}
    virtual bool onMouseDown(Point, uint32_t /*mods*/) { return false; }
    virtual bool onMouseUp(Point, uint32_t /*mods*/) { return false; }
    /// The mouse was taken away in the middle of a drag, which ends here and now.
    virtual void onCaptureLost() { onMouseUp({}, 0); }
    virtual bool onDoubleClick(Point, uint32_t /*mods*/) { return false; }
    virtual bool onRightDown(Point, uint32_t /*mods*/) { return false; }
    virtual bool onRightUp(Point, uint32_t /*mods*/) { return false; }
    virtual bool onRightDoubleClick(Point, uint32_t /*mods*/) { return false; }
    /// Only while a button is down, unless setWantsAllMoves.
    virtual bool onMouseMove(Point, uint32_t /*mods*/) { return false; }
    /// `delta` in multiples of 120 a notch.
    virtual bool onWheel(Point, int32_t /*delta*/, uint32_t /*mods*/) { return false; }
    virtual bool onKeyDown(uint32_t /*key*/, uint32_t /*mods*/, bool /*wasDown*/) { return false; }
    virtual bool onKeyUp(uint32_t /*key*/, uint32_t /*mods*/) { return false; }
    virtual bool onChar(uint32_t /*code*/, uint32_t /*mods*/, bool /*repeated*/) { return false; }
    virtual void onTimer(uint32_t /*id*/) {}

    /// In the parent's pixels. A side of 0 or below changes nothing.
    void setGeometry(int32_t x, int32_t y, int32_t width, int32_t height);
    void show(bool activate);
    void hide();
    /// To the top of its siblings.
    void raise();
    bool hasFocus() const;
    void setFocus();
    /// Asks for a paint of a part, or of all; a present but empty part asks for nothing.
    void invalidate(const OptionalRect &area = {});
    /// Paints at once.
    void repaintNow(const OptionalRect &area = {});
    void setCursor(const Platform::CursorRef &shape);

    static WindowBase *fromHandle(Platform::WindowHandle window);
    /// The components behind the controls.
    const TransformHandle &transform() const;

    FrameBase &getFrame() const { return *frame; }
    Platform::WindowHandle nativeHandle() const { return handle; }
    WindowBase *parentWindow() const { return parent; }
    int32_t width() const { return geometry.width(); }
    int32_t height() const { return geometry.height(); }
    /// Where a point of this window lies in the frame.
    Point toFrame(Point at) const { return at + Point{frameX, frameY}; }
    /// The window's rectangle in frame coordinates.
    Rect frameRect() const { return Rect::at({frameX, frameY}, width(), height()); }
    bool isVisible() const { return visible; }
    static int32_t liveWindows() { return liveCount; }

    // Signals and slots.
    void sigReceivedFocus() { emitSignal<&WindowBase::sigReceivedFocus>(); }
    void sigLostFocus() { emitSignal<&WindowBase::sigLostFocus>(); }
    /// Whenever the user changes the control's value by a key.
    void sigResetFocusTimer() { emitSignal<&WindowBase::sigResetFocusTimer>(); }
    void slotSetFocus() { setFocus(); }
    using Signals = MetaRows<Meta<&WindowBase::sigReceivedFocus>, Meta<&WindowBase::sigLostFocus>,
                             Meta<&WindowBase::sigResetFocusTimer>>;
    using Slots = MetaRows<Meta<&WindowBase::slotSetFocus>>;

    std::optional<intptr_t> onEvent(Platform::WindowHandle window, const Platform::Event &event) override;
    /// Gives an event of the mouse to this window and, while nobody takes it, to its parents.
    std::optional<intptr_t> handleMouse(const Platform::Event &event);
    std::optional<intptr_t> handleKey(const Platform::Event &event);
    /// One mouse event, in this window's pixels, to the operation for it.
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
