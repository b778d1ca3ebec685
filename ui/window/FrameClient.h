#pragma once
#include <cstdint>

#include "platform/WindowSystem.h"
#include "ui/draw/Surface.h"

namespace UI::Native {

/// What the frame and its windows ask of the window that the editor is.
class FrameClient {
public:
    /// The window that the host sees; the frame's windows are its children.
    virtual Platform::WindowHandle hostWindow() const = 0;
    /// Until the editor is complete; paint events then stay pending.
    virtual bool isPaintingSuspended() const = 0;
    /// The skin's ground, in frame coordinates; controls take what lies under them from it. May be empty.
    virtual SurfaceRef background() const = 0;
    /// Whether the control with the focus shows that it has it.
    virtual bool showsFocus() const = 0;

    /// The next control, or the one before.
    virtual void moveFocus(bool forward) = 0;
    /// First look at a mouse event, in frame coordinates; true takes it away from the controls.
    virtual bool onFrameMouse(uint32_t kind, Point at, int32_t wheel, uint32_t mods) = 0;
    /// The same while a control has captured the mouse.
    virtual void onFrameMouseCaptured(uint32_t kind, Point at, int32_t wheel, uint32_t mods) = 0;

protected:
    ~FrameClient() = default;
};

} // namespace UI::Native
