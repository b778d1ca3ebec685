#pragma once
#include <array>

#include "dsp/chain/TransformBase.h"
#include "dsp/meter/Level.h"
#include "dsp/meter/Spectrum.h"
#include "dsp/stages/CrossOver.h"
#include "dsp/stages/Dynamics.h"
#include "dsp/stages/Gain.h"
#include "dsp/stages/Maximizer.h"

namespace DSP {

/// The chain of this effect: crossover, spectrum and dynamics per band, sum, maximizer, gain, level meter.
class Transform final : public TransformBase {
public:
    explicit Transform(PluginLink &plugin);

    Meter::Level *level() { return &stages.level; }
    Gain *gain() { return &stages.gain; }
    CrossOver *crossOver() { return &stages.crossOver; }
    Maximizer *maximizer() { return &stages.maximizer; }
    Dynamics *dynamics() { return &stages.dynamics; }
    Meter::Spectrum *spectrum(uint32_t band) { return &stages.spectrum[band]; }

protected:
    void resetState() override;
    uint32_t transform(uint32_t frames, float *inLeft, float *inRight, float *outLeft, float *outRight,
                       uint32_t zipperSamples) override;

private:
    struct BandPointers {
        float *left[kBands], *right[kBands];
    };
    BandPointers split(uint32_t frames, float *left, float *right, uint32_t zipperSamples);
    void compress(uint32_t frames, const BandPointers &bands, uint32_t zipperSamples);
    void feedSpectra(uint32_t frames, const BandPointers &bands);
    void sum(uint32_t frames, const BandPointers &bands, float *left, float *right);

    /// In the order of construction, which everything that walks the components relies on.
    struct Stages {
        Meter::Level level;
        Gain gain;
        CrossOver crossOver;
        Maximizer maximizer;
        Dynamics dynamics;
        std::array<Meter::Spectrum, kBands> spectrum;
        explicit Stages(PluginLink &plugin);
    };
    Stages stages;
    std::array<Util::AlignedBuffer<float>, kBands> bandLeft, bandRight;
    uint8_t splitGuardPhase = 0, bandGuardPhase = 0, sumGuardPhase = 0;
};

} // namespace DSP
