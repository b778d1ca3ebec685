#include "ui/controls/GainReductionMeter.h"

#include "dsp/numerics/Math.h"
#include "ui/controls/MeterScale.h"
#include "ui/draw/Copy.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

namespace {

constexpr uint32_t kHoldMs = 250;
constexpr int32_t kSegmentHeight = 5, kBarLeft = 2, kBarTop = 2, kBarWidth = 4; // pixels

} // namespace

GainReductionMeter::GainReductionMeter(FrameBase *ownerFrame, WindowBase *parentWindow, uint32_t bandIndex,
                                       const String &windowName, PixmapRef off, PixmapRef on)
    : Reflected(ownerFrame, parentWindow, windowName),
      band(bandIndex),
      dynamics(transform().dynamics()),
      offImage(std::move(off)),
      onImage(std::move(on))
{
    if (takeSizeOf(offImage)) redraw();
}

void GainReductionMeter::update()
{
    const float gain = transform().global()->getBypass() ? 1.0f : dynamics->readGainReduction(band);
    const auto db = static_cast<float>(DSP::Math::linearToDecibels(gain));
    const uint32_t now = frame->milliseconds();
    if (db <= heldDb || now - heldTime >= kHoldMs) {
        heldDb = db;
        heldTime = now;
    }
    const int32_t bar = MeterScale::reductionSegmentOf(db), peak = MeterScale::reductionSegmentOf(heldDb);
    if (bar == barSegments && peak == peakSegment) return;
    barSegments = MeterScale::follow(barSegments, bar);
    peakSegment = peak;
    redraw();
}

void GainReductionMeter::redraw()
{
    drawPixmap(offImage, canvas, {});
    const auto copyLit = [this](int32_t row, int32_t rows) {
        drawPixmap(onImage, Rect::at({kBarLeft, row}, kBarWidth, rows), canvas, {kBarLeft, row}, 0);
    };
    copyLit(kBarTop, kSegmentHeight * barSegments);
    if (peakSegment != 0) copyLit(kBarTop + kSegmentHeight * peakSegment, kSegmentHeight);
    present();
}

} // namespace UI::Native
