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
    int32_t height; // as Platform::FontRequest
    String name;
    bool bold;
};

/// The drawing area of an editor as a whole, and what its windows share: the mouse capture, fonts, cursors,
/// the keys' state.
/// Ownership the frame owns the windows without a parent
/// Thread    the window's
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

    /// Out of range, or a font that the system has not: the old one stays.
    void setFont(uint32_t index, const FontSpec &spec);
    const Platform::FontRef &font(uint32_t index) const { return fonts[index]; }
    void createKeyboardProxy();
    void addWindow(WindowBase *window);
    void forgetWindow(WindowBase *window);

    /// Whoever had the mouse before sees a release first, which ends its drag.
    void setMouseCapture(WindowBase *window);
    void releaseMouseCapture();
    WindowBase *mouseCaptureWindow() const { return mouseCapture; }
    /// The system has taken the mouse from a window: its drag ends.
    void mouseCaptureLost(WindowBase *window);
    /// Ends a drag, if there is one, by a release at (0, 0).
    void endDrag();
    /// Ends it without what a release brings about: no button is clicked, no entry box opens.
    void abandonDrag();

    // The keys at this moment.
    bool ctrlDown() const;
    bool shiftDown() const;
    bool altDown() const;

    /// Upper left corner of the host-side window on the screen; (0, 0) if the system does not say.
    Point windowOrigin() const;
    /// In frame coordinates; (0, 0) if the system does not say.
    Point cursorPosition() const;
    uint32_t milliseconds() const;
    const Platform::CursorRef &arrow();

    /// No control has a timer of its own: the editor's tick serves them all.
    void runTimers() {}
    /// Copies a part of a surface to the screen; `to` is in the target window's own pixels.
    static void blit(const SurfaceRef &from, Platform::DeviceContext &dc, const Rect &source, Point to);

    /// Name of one of the editor's native window classes, by its last part.
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
    bool holdsMouse = false; // the system gave it to mouseCapture, and has not taken it back
    KeyboardProxy *keyboardProxy = nullptr;
    std::vector<Platform::FontRef> fonts;
    std::vector<WindowBase *> windows; // owned
    bool frameDestroying = false;

private:
    const std::shared_ptr<Dispatch> events = std::make_shared<Dispatch>();
    Platform::CursorRef arrowCursor;
    static inline int32_t liveCount = 0;
};

/// The frame of an editor.
class Frame : public Reflected<Frame, FrameBase> {
public:
    static constexpr const char *kClassName = "UI::Native::Frame";
    using Reflected::Reflected;
};

} // namespace UI::Native
