#pragma once
#include <array>
#include <vector>

#include "dsp/meter/Spectrum.h"
#include "dsp/stages/CrossOver.h"
#include "plugin/Plugin.h"
#include "ui/controls/SpectrumAxis.h"
#include "ui/controls/SpectrumCurve.h"
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// Shows the live spectrum of each band, and the three crossover frequencies as lines that the user can drag.
/// State   idle <-> dragging, from the press on a line to the release
/// Thread  window thread; updateSpectrum() runs at every tick
class MultiBandSpectrum : public Reflected<MultiBandSpectrum, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::MultiBandSpectrum";

    MultiBandSpectrum(FrameBase *ownerFrame, WindowBase *parentWindow);

    /// Reads the spectra that have changed and redraws.
    void updateSpectrum();
    /// Reads the sample rate and the cutoff frequencies and redraws.
    void updateCutoffs();
    /// Index of the cutoff whose line is near column `x`.
    OptionalIndex hitTest(int32_t x) const;
    /// Minimum distance between two cutoffs.
    float minGapOctaves() const { return axis.octaves(kMinGapPixels); }

    void redraw() override;
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onMouseUp(Point at, uint32_t mods) override;
    bool onDoubleClick(Point at, uint32_t mods) override;
    bool onMouseMove(Point at, uint32_t mods) override;

    void sigUserCutoffChanged(uint32_t cutoff, float hz)
    {
        emitSignal<&MultiBandSpectrum::sigUserCutoffChanged>(cutoff, hz);
    }
    void sigResetCutoff(uint32_t cutoff) { emitSignal<&MultiBandSpectrum::sigResetCutoff>(cutoff); }
    void sigCutoffFocus(uint32_t cutoff) { emitSignal<&MultiBandSpectrum::sigCutoffFocus>(cutoff); }
    void slotUpdateCutoffs();
    void slotSamplingRateChanged();
    using Signals = MetaRows<Meta<&MultiBandSpectrum::sigUserCutoffChanged, "iCutoff", "fHz">,
                             Meta<&MultiBandSpectrum::sigResetCutoff, "iCutoff">,
                             Meta<&MultiBandSpectrum::sigCutoffFocus, "iCutoff">>;
    using Slots = MetaRows<Meta<&MultiBandSpectrum::slotUpdateCutoffs>,
                           Meta<&MultiBandSpectrum::slotSamplingRateChanged>>;

    static constexpr int32_t kMinGapPixels = 10;

private:
    void takeSamplingRate();
    void rebuildBins();
    void drawCutoff(uint32_t cutoff);
    void updateCursor(int32_t x);
    void tellPlugin(Plugin::EditPhase phase, uint32_t cutoff);
    void dragTo(int32_t x);

    DSP::CrossOver *const crossOver;
    const PixmapRef background;
    const SpectrumAxis axis;
    SpectrumCurve curve;
    uint32_t samplingRate = 44100; // Hz
    SpectrumAxis::Bins bins;
    std::array<std::vector<float>, DSP::kBands> bandData; // linear magnitudes
    uint32_t binCount = 0;                                // 0 until the first spectrum arrives
    const int32_t minX, maxX;                             // range of a line's column
    std::array<int32_t, DSP::kCutoffs> cutoffX;
    uint32_t dragCutoff = 0;
    bool dragging = false;
    int32_t dragOffset = 0; // pixels from the pointer to the line
};

} // namespace UI::Native
