#include "ui/controls/PixmapButton.h"

#include "ui/draw/Copy.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

PixmapButton::PixmapButton(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                           const String &imagePrefix, PixmapRef overlay)
    : Reflected(ownerFrame, parentWindow, windowName), focusOverlay(std::move(overlay))
{
    setImages(imagePrefix);
}

void PixmapButton::setImages(const String &imagePrefix)
{
    normalImage = loadPixmap(imagePrefix + "Normal.png");
    pressedImage = loadPixmap(imagePrefix + "Pressed.png");
    if (takeSizeOf(normalImage)) redraw();
}

void PixmapButton::redraw()
{
    copyBackground();
    drawPixmap(down ? pressedImage : normalImage, canvas, {});
    if (showsFocus()) drawPixmap(focusOverlay, canvas, {});
    present();
}

bool PixmapButton::onMouseDown(Point at, uint32_t)
{
    if (!isHit(at) || (hotRect.present && !hotRect.rect.contains(at))) return false;
    setFocus();
    frame->setMouseCapture(this);
    down = true;
    redraw();
    if (!frame->altDown()) repaintNow();
    return true;
}

bool PixmapButton::onMouseMove(Point at, uint32_t)
{
    if (!hasCapture()) return false;
    if (down == isHit(at)) return true;
    down = !down;
    redraw();
    repaintNow();
    return true;
}

bool PixmapButton::onMouseUp(Point at, uint32_t)
{
    if (!hasCapture()) return false;
    frame->releaseMouseCapture();
    if (!down) return true;
    down = false;
    redraw();
    if (isHit(at)) sigClicked();
    return true;
}

void PixmapButton::onCaptureLost()
{
    if (!hasCapture()) return;
    frame->releaseMouseCapture();
    down = false;
    redraw();
}

} // namespace UI::Native
