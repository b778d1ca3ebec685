#include "ui/window/CanvasWindow.h"

#include "ui/draw/Copy.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

void CanvasWindow::paint(Platform::DeviceContext &dc, const Rect &clip)
{
    FrameBase::blit(canvas, dc, clip, clip.corner());
}

void CanvasWindow::onFocusIn()
{
    redraw();
    Window::onFocusIn();
}

void CanvasWindow::onFocusOut()
{
    redraw();
    Window::onFocusOut();
}

void CanvasWindow::makeCanvas(int32_t canvasWidth, int32_t canvasHeight)
{
    canvas = std::make_shared<Surface>(canvasWidth, canvasHeight);
}

bool CanvasWindow::takeSizeOf(const PixmapRef &image)
{
    if (!image) return false;
    makeCanvas(image->width, image->height);
    setGeometry(geometry.left, geometry.top, image->width, image->height);
    return true;
}

void CanvasWindow::copyBackground()
{
    if (frame->client()) copyImage(frame->client()->background(), frameRect(), canvas, {}, false, 0);
}

bool CanvasWindow::showsFocus() const
{
    return hasFocus() && frame->client() && frame->client()->showsFocus();
}

bool CanvasWindow::hasCapture() const { return frame->mouseCaptureWindow() == this; }

bool CanvasWindow::wantsReset() const
{
    return frame->altDown() && (!frame->shiftDown() || frame->ctrlDown());
}

} // namespace UI::Native
