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

/// The live spectrum of each band, and the three crossover frequencies as lines that can be dragged.
/// State   idle <-> dragging, from press to release on a line
/// Thread  the window's; updateSpectrum() at every tick
class MultiBandSpectrum : public Reflected<MultiBandSpectrum, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::MultiBandSpectrum";

    MultiBandSpectrum(FrameBase *ownerFrame, WindowBase *parentWindow);

    /// Takes new spectra, if there are any, and paints.
    void updateSpectrum();
    /// Shows the cutoffs of the crossover, at the rate of the plug-in.
    void updateCutoffs();
    /// The cutoff whose line is near that column.
    OptionalIndex hitTest(int32_t x) const;
    /// The least distance between two cutoffs.
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
    uint32_t binCount = 0;                                // 0 until a first spectrum came
    const int32_t minX, maxX;                             // columns of a line
    std::array<int32_t, DSP::kCutoffs> cutoffX;
    uint32_t dragCutoff = 0;
    bool dragging = false;
    int32_t dragOffset = 0; // from the pointer to the line
};

} // namespace UI::Native
