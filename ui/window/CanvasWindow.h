#pragma once
#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"
#include "ui/window/Window.h"

namespace UI::Native {

/// A control that draws its picture into a surface. It has no reflection record: the records of its subclasses
/// name Window as their base class.
class CanvasWindow : public Window {
public:
    using Window::Window;

    void paint(Platform::DeviceContext &dc, const Rect &clip) override;
    void onFocusIn() override;
    void onFocusOut() override;
    void onEnableChanged() override { redraw(); }

    /// Redraws the picture and requests a paint.
    virtual void redraw() = 0;
    const SurfaceRef &picture() const { return canvas; }

protected:
    /// Replaces the canvas with an empty one of this size in pixels. The window keeps its geometry.
    void makeCanvas(int32_t canvasWidth, int32_t canvasHeight);
    /// Makes a canvas of the image's size and resizes the window to it. False if the image is null.
    bool takeSizeOf(const PixmapRef &image);
    /// Copies the editor's background under the control into the canvas.
    void copyBackground();
    /// Call when the picture is complete: requests a paint.
    void present() { invalidate(); }
    /// True if the control should draw its focus mark.
    bool showsFocus() const;
    bool hasCapture() const;
    /// True if a click should reset the value: Alt is down, without Shift or with both Shift and Ctrl.
    bool wantsReset() const;

    SurfaceRef canvas;
};

} // namespace UI::Native
