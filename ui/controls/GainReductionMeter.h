#pragma once
#include "dsp/stages/Dynamics.h"
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// A bar that grows downwards with a band's gain reduction and briefly holds its peak.
/// Thread  window thread; update() runs at every tick and repaints only if a segment changes
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
