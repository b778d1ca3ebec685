#pragma once
#include <string>
#include <vector>

#include "PluginBase/Util/Reflected.h"
#include "platform/WindowSystem.h"
#include "plugin/Plugin.h"
#include "ui/draw/Surface.h"
#include "ui/window/Dispatch.h"
#include "ui/window/FrameClient.h"

namespace UI::Native {

class KeyboardProxy;
class WindowBase;

struct FontSpec {
    int32_t height; // as in Platform::FontRequest
    String name;
    bool bold;
};

/// An editor's drawing area, with the state that all its windows share: mouse capture, fonts, cursors and keys.
/// Ownership the frame owns the windows without a parent
/// Thread    window thread
class FrameBase : public Reflected<FrameBase, Object> {
public:
    static constexpr const char *kClassName = "UI::Native::FrameBase";
    static constexpr uint32_t kFonts = 3;

    FrameBase(Platform::WindowHandle hostHandle, Point origin, Plugin *effect);
    ~FrameBase() override;

    void setClient(FrameClient *root) { mainWindow = root; }
    FrameClient *client() const { return mainWindow; }
    Platform::WindowHandle hostWindow() const { return handle; }
    Plugin *getPlugin() const { return plugin; }
    const TransformHandle &transform() const { return plugin->transformHandle(); }
    const std::shared_ptr<Dispatch> &dispatch() const { return events; }
    bool isDestroying() const { return frameDestroying; }

    /// Keeps the old font if `index` is out of range or the system lacks the new one.
    void setFont(uint32_t index, const FontSpec &spec);
    const Platform::FontRef &font(uint32_t index) const { return fonts[index]; }
    void createKeyboardProxy();
    void addWindow(WindowBase *window);
    void forgetWindow(WindowBase *window);

    /// Ends any drag, then captures the mouse for `window`.
    void setMouseCapture(WindowBase *window);
    void releaseMouseCapture();
    WindowBase *mouseCaptureWindow() const { return mouseCapture; }
    /// Call when the system has taken the capture from `window`; ends its drag.
    void mouseCaptureLost(WindowBase *window);
    /// Ends any drag with a mouse release at (0, 0).
    void endDrag();
    /// Ends any drag without the effects of a release: no button is clicked, no entry box opens.
    void abandonDrag();

    // Current state of the keys.
    bool ctrlDown() const;
    bool shiftDown() const;
    bool altDown() const;

    /// Top left corner of hostWindow() on the screen; (0, 0) if unknown.
    Point windowOrigin() const;
    /// In frame coordinates; (0, 0) if unknown.
    Point cursorPosition() const;
    uint32_t milliseconds() const;
    const Platform::CursorRef &arrow();

    /// Does nothing: the editor's tick updates all controls.
    void runTimers() {}
    /// Copies part of a surface to the screen. `to` is in the target window's coordinates.
    static void blit(const SurfaceRef &from, Platform::DeviceContext &dc, const Rect &source, Point to);

    /// Full name of a native window class that ends with `stem`.
    std::string nativeClassName(const char *stem) const { return nativeClassName(*plugin, stem); }
    static std::string nativeClassName(const Plugin &effect, const char *stem);
    static int32_t liveFrames() { return liveCount; }

    void sigPostUndoEvent(const String &what) { emitSignal<&FrameBase::sigPostUndoEvent>(what); }
    void sigNullTimer(uint32_t timer) { emitSignal<&FrameBase::sigNullTimer>(timer); }
    using Signals =
        MetaRows<Meta<&FrameBase::sigPostUndoEvent, "strName">, Meta<&FrameBase::sigNullTimer, "iTimer">>;

protected:
    const Platform::WindowHandle handle;
    const int32_t originX, originY;
    Plugin *const plugin;
    FrameClient *mainWindow = nullptr;
    WindowBase *mouseCapture = nullptr;
    bool holdsMouse = false; // the system has given the capture to mouseCapture
    KeyboardProxy *keyboardProxy = nullptr;
    std::vector<Platform::FontRef> fonts;
    std::vector<WindowBase *> windows; // owned
    bool frameDestroying = false;

private:
    const std::shared_ptr<Dispatch> events = std::make_shared<Dispatch>();
    Platform::CursorRef arrowCursor;
    static inline int32_t liveCount = 0;
};

class Frame : public Reflected<Frame, FrameBase> {
public:
    static constexpr const char *kClassName = "UI::Native::Frame";
    using Reflected::Reflected;
};

} // namespace UI::Native
