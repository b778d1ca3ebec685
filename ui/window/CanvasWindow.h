#pragma once
#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"
#include "ui/window/Window.h"

namespace UI::Native {

/// A control that composes its picture in a surface of its own. It has no record among the classes of the
/// family: what derives from it derives from Window.
class CanvasWindow : public Window {
public:
    using Window::Window;

    void paint(Platform::DeviceContext &dc, const Rect &clip) override;
    void onFocusIn() override;
    void onFocusOut() override;
    void onEnableChanged() override { redraw(); }

    /// Composes the picture anew and asks for a paint.
    virtual void redraw() = 0;
    const SurfaceRef &picture() const { return canvas; }

protected:
    /// Fresh pixels of this size; the window itself keeps its geometry.
    void makeCanvas(int32_t canvasWidth, int32_t canvasHeight);
    /// The same, with the window, of the size of an image; false without one.
    bool takeSizeOf(const PixmapRef &image);
    /// Puts the editor's ground under the control.
    void copyBackground();
    /// The picture is complete: shows it with the next paint.
    void present() { invalidate(); }
    /// Whether to draw the mark of the keyboard focus.
    bool showsFocus() const;
    bool hasCapture() const;
    /// Alt alone, or all three keys: back to the default.
    bool wantsReset() const;

    SurfaceRef canvas;
};

} // namespace UI::Native
