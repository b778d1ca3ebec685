#include "ui/controls/PixmapSlider.h"

#include <cmath>

#include "ui/draw/Copy.h"

namespace UI::Native {

namespace {

constexpr float kFineUnitsPerPixel = 0.025f;

} // namespace

PixmapSlider::PixmapSlider(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                           const Images &pictures, DSP::Component *parameterOwner, uint32_t parameter,
                           Apply apply)
    : ValueControl(ownerFrame, parentWindow, windowName, parameterOwner, parameter, apply), images(pictures)
{
    value = clampToDisplay(value); // the first refresh() writes it to the parameter
    if (!images.track) return;
    bottomPixel = std::max(images.track->height - handleHeight(), 1);
    takeSizeOf(images.track);
    redraw();
}

int32_t PixmapSlider::pixelOfValue(float v) const
{
    const float share = (v - maxValue) / (minValue - maxValue);
    return std::clamp(static_cast<int32_t>(std::lround(share * static_cast<float>(bottomPixel))), 0,
                      bottomPixel);
}

float PixmapSlider::valueOfPixel(int32_t pixel) const
{
    return maxValue + static_cast<float>(pixel) / static_cast<float>(bottomPixel) * (minValue - maxValue);
}

void PixmapSlider::refresh()
{
    const float now = component->floatParamValue(paramIndex);
    if (now == value) return;
    const float legal = std::clamp(now, minValue, maxValue);
    if (legal != now) component->setFloatParamValue(paramIndex, legal);
    value = legal;
    redraw();
}

void PixmapSlider::redraw()
{
    const Point at{0, pixelOfValue(value)};
    drawPixmap(images.track, canvas, {});
    drawPixmap(hasCapture() ? images.handlePressed : images.handleNormal, canvas, at);
    if (showsFocus()) drawPixmap(images.focusOverlay, canvas, at);
    present();
}

bool PixmapSlider::onMouseDown(Point at, uint32_t)
{
    if (wantsReset()) {
        reset();
        return true;
    }
    setFocus();
    tellPlugin(Plugin::EditPhase::begin);
    const int32_t handlePixel = pixelOfValue(value), half = handleHeight() / 2;
    if (at.y >= handlePixel && at.y < handlePixel + handleHeight()) {
        grabOffset = at.y - handlePixel;
    } else { // move the handle under the pointer and drag it from there
        changeTo(valueOfPixel(at.y - half));
        grabOffset = half;
    }
    dragValue = value;
    frame->setMouseCapture(this);
    redraw();
    return true;
}

bool PixmapSlider::onMouseMove(Point at, uint32_t mods)
{
    if (!grabOffset || !dragValue) return false;
    const int32_t pixel = at.y - *grabOffset;
    if (mods & Platform::kControl) {
        // Motion counts from the value at which Ctrl was pressed: dragValue stays unchanged.
        const auto moved = static_cast<float>(pixelOfValue(*dragValue) - pixel);
        changeBy(moved * kFineUnitsPerPixel + *dragValue - value);
    } else {
        dragValue = valueOfPixel(pixel);
        changeBy(*dragValue - value);
    }
    return true;
}

bool PixmapSlider::onMouseUp(Point, uint32_t)
{
    if (!hasCapture()) return false;
    grabOffset.reset();
    dragValue.reset();
    frame->releaseMouseCapture();
    tellPlugin(Plugin::EditPhase::end);
    redraw();
    return true;
}

bool PixmapSlider::onDoubleClick(Point, uint32_t)
{
    reset();
    return true;
}

bool PixmapSlider::onWheel(Point, int32_t delta, uint32_t mods)
{
    changeBy(scaledStep(static_cast<float>(delta) * kUnitsPerWheelTick, mods, kCoarse, kFine));
    return true;
}

bool PixmapSlider::onKeyDown(uint32_t key, uint32_t mods, bool)
{
    return stepByKey(key, mods, 3.0f, static_cast<float>(height())); // exceeds every range
}

} // namespace UI::Native
