#pragma once
#include "PluginBase/Util/OptionalIndex.h"
#include "dsp/meter/Level.h"
#include "dsp/stages/Dynamics.h"
#include "ui/controls/LevelMeterReadout.h"
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// Two level bars, each with a held peak and a clip light that stays on until a click. Shows a band's input or the
/// effect's output.
/// Thread  window thread; update() runs at every tick, polls the component and repaints only if a segment changes
class LevelMeter : public Reflected<LevelMeter, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::LevelMeter";

    /// Without `bandIndex` the meter shows the output. `numbers` may be null.
    LevelMeter(FrameBase *ownerFrame, WindowBase *parentWindow, OptionalIndex bandIndex,
               const String &windowName, PixmapRef off, PixmapRef on, LevelMeterReadout *numbers);

    void update();
    void redraw() override;
    /// Resets the clip lights and the held peaks.
    bool onMouseDown(Point at, uint32_t mods) override;

private:
    struct Levels { // dB
        float left, right, leftPeak, rightPeak;
    };
    /// The displayed state of one bar.
    struct Channel {
        int32_t segments = 0, peakSegment = 0;
        bool over = false;
        bool operator==(const Channel &) const = default;
    };
    struct HeldPeak {
        float db = 0.0f;
        uint32_t since = 0; // milliseconds
        void hold(float level, uint32_t now);
    };

    Levels readLevels();
    Channel next(const Channel &shown, float level, float peak) const;
    void showNumbers(const Levels &levels);
    void drawChannel(const Channel &channel, int32_t barLeft, int32_t lightLeft);
    void copyLit(const Rect &part);

    const OptionalIndex band;
    DSP::Dynamics *const dynamics;
    DSP::Meter::Level *const levelMeter;
    LevelMeterReadout *const readout; // not owned
    const PixmapRef offImage, onImage;
    const int32_t numSegments;
    Channel left, right;
    HeldPeak heldLeft, heldRight; // for a band; DSP::Meter::Level holds the output's peaks
};

} // namespace UI::Native
