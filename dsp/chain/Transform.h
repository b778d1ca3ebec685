#pragma once
#include <array>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/chain/TransformBase.h"
#include "dsp/meter/Level.h"
#include "dsp/meter/Spectrum.h"
#include "dsp/stages/CrossOver.h"
#include "dsp/stages/Dynamics.h"
#include "dsp/stages/Gain.h"
#include "dsp/stages/Maximizer.h"

namespace DSP {

/// The signal chain: crossover, spectrum and dynamics per band, sum, maximizer, gain, level meter.
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
    void resetState() override { splitGuardPhase = sumGuardPhase = 0; }
    void transform(const Now &now, const Block &in, const Block &out) override;

private:
    /// Splits a block into bands, in buffers that the chain owns.
    Bands split(const Now &now, const Block &in);
    void compress(const Now &now, const Block &in, const Bands &bands);
    void feedSpectra(uint32_t frames, const Bands &bands);
    void sum(const Bands &bands, const Block &out);

    /// The order of construction is the order of the components, which is part of the saved format.
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
    uint8_t splitGuardPhase = 0, sumGuardPhase = 0;
};

} // namespace DSP
