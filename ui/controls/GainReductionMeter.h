#pragma once
#include "dsp/stages/Dynamics.h"
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// A bar that hangs from the top: how much a band is turned down, with the deepest of the last moments held.
/// Thread  the window's; update() at every tick. Nothing is painted while the same segments show
class GainReductionMeter : public Reflected<GainReductionMeter, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::GainReductionMeter";

    GainReductionMeter(FrameBase *ownerFrame, WindowBase *parentWindow, uint32_t bandIndex,
                       const String &windowName, PixmapRef off, PixmapRef on);

    void update();
    void redraw() override;

private:
    const uint32_t band;
    DSP::Dynamics *const dynamics;
    const PixmapRef offImage, onImage;
    int32_t barSegments = 0, peakSegment = 0;
    float heldDb = 0.0f;
    uint32_t heldTime = 0; // milliseconds
};

} // namespace UI::Native
