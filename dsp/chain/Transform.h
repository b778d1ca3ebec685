#pragma once
#include <array>
#include <memory>

#include "dsp/chain/TransformBase.h"
#include "dsp/meter/Level.h"
#include "dsp/meter/Spectrum.h"
#include "dsp/stages/CrossOver.h"
#include "dsp/stages/Dynamics.h"
#include "dsp/stages/Gain.h"
#include "dsp/stages/Maximizer.h"

namespace DSP {

/// The chain of this effect: crossover, spectrum and compressor per band, sum, limiter, gain, level meter.
class Transform final : public TransformBase {
public:
    explicit Transform(PluginLink &plugin);

    Meter::Level *level() const { return levelMeter.get(); }
    Gain *gain() const { return outputGain.get(); }
    CrossOver *crossOver() const { return splitter.get(); }
    Maximizer *maximizer() const { return limiter.get(); }
    Dynamics *dynamics() const { return compressor.get(); }
    Meter::Spectrum *spectrum(uint32_t band) const { return spectra[band].get(); }

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

    // in the order of construction, which everything that walks the components relies on
    std::unique_ptr<Meter::Level> levelMeter;
    std::unique_ptr<Gain> outputGain;
    std::unique_ptr<CrossOver> splitter;
    std::unique_ptr<Maximizer> limiter;
    std::unique_ptr<Dynamics> compressor;
    std::array<std::unique_ptr<Meter::Spectrum>, kBands> spectra;
    std::array<Util::AlignedBuffer<float>, kBands> bandLeft, bandRight;
    uint8_t splitNoisePhase = 0, bandNoisePhase = 0, sumNoisePhase = 0;
};

} // namespace DSP
