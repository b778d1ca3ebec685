#pragma once
#include "PluginBase/Util/OptionalIndex.h"
#include "dsp/meter/Level.h"
#include "dsp/stages/Dynamics.h"
#include "ui/controls/LevelMeterReadout.h"
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// Two bars of level with a held peak and a light for overs, which stays on until a click. It shows a band's
/// input, or the output of the effect.
/// Thread  the window's; update() at every tick. It polls the component; nothing is painted while the same
///         segments show
class LevelMeter : public Reflected<LevelMeter, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::LevelMeter";

    /// Without a band it is the output's. `numbers` may be null.
    LevelMeter(FrameBase *ownerFrame, WindowBase *parentWindow, OptionalIndex bandIndex,
               const String &windowName, PixmapRef off, PixmapRef on, LevelMeterReadout *numbers);

    void update();
    void redraw() override;
    /// Puts the lights out and drops the held peaks.
    bool onMouseDown(Point at, uint32_t mods) override;

private:
    struct Levels { // dB
        float left, right, leftPeak, rightPeak;
    };
    /// What one bar shows.
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
    HeldPeak heldLeft, heldRight; // of a band; the output's component holds by itself
};

} // namespace UI::Native
