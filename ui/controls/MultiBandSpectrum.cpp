#include "ui/controls/MultiBandSpectrum.h"

#include <algorithm>
#include <cstdlib>

#include "ui/draw/Copy.h"
#include "ui/draw/Fill.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

namespace {

constexpr uint32_t kCurveColours[DSP::kBands] = {0x00BAFF, 0xFF9C00, 0xA8FF00, 0xAD47A5};
constexpr uint32_t kLineColour = 0xFFFFFF, kAboveNyquistColour = 0xFFFFFF;
constexpr uint8_t kBandFade = 255 - 130, kAboveNyquistFade = 255 - 200;
constexpr int32_t kHitPixels = 5;
constexpr const char *kBackgroundImage = "MultiBandSpectrum_Background.png";

int32_t widthOf(const PixmapRef &image) { return image ? image->width : 1; }

} // namespace

MultiBandSpectrum::MultiBandSpectrum(FrameBase *ownerFrame, WindowBase *parentWindow)
    : Reflected(ownerFrame, parentWindow, "Multiband Spectrum"),
      crossOver(transform().crossOver()),
      background(loadPixmap(kBackgroundImage)),
      axis(widthOf(background), background ? background->height : 1),
      curve(axis),
      minX(std::max(axis.column(SpectrumAxis::kLowestHz), 1)),
      maxX(std::min(axis.column(SpectrumAxis::kHighestHz), axis.columns() - 2))
{
    wantsAllMoves = true; // the pointer's shape shows where a line can be dragged
    for (auto &data : bandData) data.resize(DSP::Meter::Spectrum::kMostMagnitudes);
    for (uint32_t i = 0; i < cutoffX.size(); ++i) cutoffX[i] = axis.column(crossOver->cutoff(i));
    if (takeSizeOf(background)) drawPixmap(background, canvas, {});
}

void MultiBandSpectrum::rebuildBins()
{
    if (binCount != 0) axis.mapBins(binCount, samplingRate, bins);
}

void MultiBandSpectrum::updateSpectrum()
{
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        uint32_t count = 0;
        if (!transform().spectrum(band)->readSpectrum(bandData[band].data(), count)) continue;
        if (count == 0 || count == binCount) continue;
        binCount = count;
        rebuildBins();
    }
    redraw();
}

void MultiBandSpectrum::redraw()
{
    if (!canvas) return;
    drawPixmap(background, canvas, {});
    if (binCount != 0)
        for (uint32_t band = 0; band < DSP::kBands; ++band) {
            curve.trace(bandData[band], bins);
            curve.draw(canvas, kCurveColours[band], kBandFade);
        }
    const float nyquist = static_cast<float>(samplingRate) * 0.5f;
    if (nyquist < SpectrumAxis::kHighestHz) {
        const Rect all = canvas->bounds();
        const Rect above{axis.column(nyquist), all.right, all.top, all.bottom};
        fillRect(canvas->pixels(), canvas->stride(), above, all, kAboveNyquistColour, kAboveNyquistFade);
    }
    for (uint32_t i = 0; i < cutoffX.size(); ++i) drawCutoff(i);
    present();
}

void MultiBandSpectrum::drawCutoff(uint32_t cutoff)
{
    const int32_t x = cutoffX[cutoff];
    if (x < 0 || x >= canvas->width()) return;
    for (int32_t y = 0; y < canvas->height(); y += 2)
        canvas->pixels()[static_cast<size_t>(y) * canvas->stride() + static_cast<size_t>(x)] = kLineColour;
}

OptionalIndex MultiBandSpectrum::hitTest(int32_t x) const
{
    OptionalIndex nearest;
    int32_t least = kHitPixels;
    for (uint32_t i = 0; i < cutoffX.size(); ++i) {
        const int32_t distance = std::abs(cutoffX[i] - x);
        if (distance > least) continue; // at equal distances the last line wins
        least = distance;
        nearest = i;
    }
    return nearest;
}

void MultiBandSpectrum::updateCursor(int32_t x)
{
    using Platform::CursorKind;
    setCursor(hitTest(x) ? Platform::windowSystem().loadCursor(CursorKind::horizontal) : nullptr);
    if (!cursor) Platform::windowSystem().showCursor(frame->arrow());
}

void MultiBandSpectrum::tellPlugin(Plugin::EditPhase phase, uint32_t cutoff)
{
    frame->getPlugin()->editParameter(
        {crossOver, DSP::ParamKind::real, DSP::CrossOver::Param::cutoff + cutoff}, phase,
        crossOver->cutoff(cutoff));
}

bool MultiBandSpectrum::onMouseDown(Point at, uint32_t)
{
    const OptionalIndex hit = hitTest(at.x);
    const bool reset = wantsReset();
    updateCursor(at.x);
    if (!hit) return true;
    if (reset) {
        sigResetCutoff(hit.value);
        return true;
    }
    sigCutoffFocus(hit.value);
    tellPlugin(Plugin::EditPhase::begin, hit.value);
    frame->setMouseCapture(this);
    if (frame->mouseCaptureWindow() != this) { // the host closed the editor
        tellPlugin(Plugin::EditPhase::end, hit.value);
        return true;
    }
    dragCutoff = hit.value;
    dragging = true;
    dragOffset = cutoffX[hit.value] - at.x;
    return true;
}

bool MultiBandSpectrum::onMouseMove(Point at, uint32_t)
{
    if (dragging)
        dragTo(at.x + dragOffset);
    else
        updateCursor(at.x);
    return true;
}

void MultiBandSpectrum::dragTo(int32_t x)
{
    const uint32_t i = dragCutoff;
    const int32_t lower = i == 0 ? minX : cutoffX[i - 1] + kMinGapPixels;
    const int32_t upper = i + 1 == cutoffX.size() ? maxX : cutoffX[i + 1] - kMinGapPixels;
    x = std::max(std::min(x, upper), lower);
    float hz = axis.frequency(x);
    if (x <= minX) hz = SpectrumAxis::kLowestHz;
    if (x >= maxX) hz = SpectrumAxis::kHighestHz;
    hz = std::clamp(hz, SpectrumAxis::kLowestHz, SpectrumAxis::kHighestHz);
    cutoffX[i] = std::clamp(axis.column(hz), minX, maxX);
    crossOver->setCutoff(i, hz);
    redraw();
    sigUserCutoffChanged(i, hz);
    tellPlugin(Plugin::EditPhase::value, i);
}

bool MultiBandSpectrum::onMouseUp(Point at, uint32_t)
{
    if (frame->mouseCaptureWindow() == this) {
        frame->releaseMouseCapture();
        if (std::exchange(dragging, false)) tellPlugin(Plugin::EditPhase::end, dragCutoff);
        dragCutoff = 0;
        dragOffset = 0;
    }
    updateCursor(at.x);
    return true;
}

bool MultiBandSpectrum::onDoubleClick(Point at, uint32_t)
{
    if (const OptionalIndex hit = hitTest(at.x)) sigResetCutoff(hit.value);
    return true;
}

void MultiBandSpectrum::takeSamplingRate()
{
    const uint32_t rate = frame->getPlugin()->sampleRate();
    if (rate == samplingRate) return;
    samplingRate = rate;
    rebuildBins();
}

void MultiBandSpectrum::updateCutoffs()
{
    takeSamplingRate();
    slotUpdateCutoffs();
}

void MultiBandSpectrum::slotUpdateCutoffs()
{
    for (uint32_t i = 0; i < cutoffX.size(); ++i)
        cutoffX[i] = std::clamp(axis.column(crossOver->cutoff(i)), minX, maxX);
    redraw();
}

void MultiBandSpectrum::slotSamplingRateChanged() { updateCutoffs(); }

} // namespace UI::Native
