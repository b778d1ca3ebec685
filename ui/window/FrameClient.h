#pragma once
#include <cstdint>

#include "platform/WindowSystem.h"
#include "ui/draw/Surface.h"

namespace UI::Native {

/// The interface through which the frame and its windows call the main window.
class FrameClient {
public:
    /// The editor's window inside the host's window; parent of the frame's windows.
    virtual Platform::WindowHandle hostWindow() const = 0;
    /// True until the editor is complete. Paint events stay pending until then.
    virtual bool isPaintingSuspended() const = 0;
    /// The skin's background in frame coordinates. Controls copy the area under them. May be null.
    virtual SurfaceRef background() const = 0;
    /// True if the focused control should draw its focus mark.
    virtual bool showsFocus() const = 0;

    /// Moves the focus to the next or previous control.
    virtual void moveFocus(bool forward) = 0;
    /// Receives each mouse event before the controls, in frame coordinates. Returns true to keep it from them.
    virtual bool onFrameMouse(uint32_t kind, Point at, int32_t wheel, uint32_t mods) = 0;
    /// Receives each mouse event while a control has captured the mouse.
    virtual void onFrameMouseCaptured(uint32_t kind, Point at, int32_t wheel, uint32_t mods) = 0;

protected:
    ~FrameClient() = default;
};

} // namespace UI::Native
