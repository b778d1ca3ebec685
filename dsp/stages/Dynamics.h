#pragma once
#include <array>
#include <limits>

#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/DynamicsKernels.h"
#include "dsp/stages/DelayLine.h"

namespace DSP {

/// Compressor of all four bands: peak detector linked over the channels, hard knee, attack and release, a
/// second smoothing, 1 ms of look-ahead, make-up gain, bypass and solo.
/// Thread  process: audio, which takes the settings once for a block. Meter reads, switches: any, no lock.
///         Other setters: any, and setSampleRate; `settingLock` keeps them apart
class Dynamics final : public ComponentImpl<Dynamics> {
public:
    explicit Dynamics(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    void suspend() override;
    /// In place. With band pointers given to run all bands whose pointer is not null are processed together;
    /// otherwise the band of setBandIndex, in `left` and `right`.
    uint32_t process(uint32_t frames, float *left, float *right) override;
    void reset() override;
    uint32_t latency() const override;

    /// Smallest gain factor since the last call, make-up gain left out; 1 is no reduction.
    float readGainReduction(uint32_t band);
    /// Largest input magnitudes since the last call.
    void readPeaks(uint32_t band, float &left, float &right);

    bool getBandLink() const { return bandLink; }
    void setBandLink(bool on);
    float threshold(uint32_t band) const { return bands[band].thresholdDb; }
    float gain(uint32_t band) const { return bands[band].gainDb; }
    float ratio(uint32_t band) const { return bands[band].ratio; }
    float attack(uint32_t band) const { return bands[band].attackMs; }
    float release(uint32_t band) const { return bands[band].releaseMs; }
    bool bypass(uint32_t band) const { return bands[band].bypass; }
    bool solo(uint32_t band) const { return bands[band].solo; }
    void setThreshold(uint32_t band, float db);
    void setGain(uint32_t band, float db);
    void setRatio(uint32_t band, float ratio);
    void setAttack(uint32_t band, float ms);
    void setRelease(uint32_t band, float ms);
    void setBypass(uint32_t band, bool on);
    void setSolo(uint32_t band, bool on);

    /// Indices in the parameter lists; add the band to all but bandLink.
    struct Param {
        enum Float : uint32_t {
            threshold,
            gain = threshold + kBands,
            ratio = gain + kBands,
            attack = ratio + kBands,
            release = attack + kBands
        };
        enum Bool : uint32_t { bandLink, bypass, solo = bypass + kBands };
    };

private:
    struct BandState {
        Util::Shared<bool> bypass = false, solo = false;
        Util::Shared<float> peakLeft = 0.0f, peakRight = 0.0f; // since they were last read
        // not a number until the constructor installs the defaults, so that every setter derives its values
        Util::Shared<float> thresholdDb = kUnset, ratio = kUnset, attackMs = kUnset, releaseMs = kUnset;
        Util::Shared<float> gainDb = kUnset;
        Util::Shared<float> thresholdLinear = 1.0f, inverseRatio = 1.0f, gainLinear = 1.0f;
        Util::Shared<float> attackCoeff = 0.0f, releaseCoeff = 0.0f;
        Util::Shared<float> smoothCoeff = 1.0f;
        Util::Shared<float> reportedGain = 1.0f; // smallest since it was last read
        DelayLine delayLeft, delayRight;         // the look-ahead lines
        uint8_t guardCounter = 0;
    };
    /// The samples of the bands to be compressed, null for the others, and what holds for the whole block.
    struct Block {
        float *left[kBands] = {}, *right[kBands] = {};
        bool bypass[kBands];
        float makeUp[kBands]; // linear
    };

    void declareParameters();
    /// False for the value that it has.
    template <class V>
    bool change(Util::Shared<V> &value, V next);
    void deriveAttack(BandState &band);
    void deriveRelease(BandState &band);
    void deriveSmoothing(BandState &band);
    uint32_t lookAheadSamples() const;
    /// Takes out of the block, and silences, the bands that another band's solo shuts.
    void silenceUnsoloed(Block &block, uint32_t frames);
    Kernels::CompressorCoeffs coefficients() const;
    void compressChunk(const Kernels::CompressorCoeffs &coeffs, const Block &block, uint32_t frames);
    void report(BandState &band, bool stereo, float peakLeft, float peakRight);

    static constexpr float kUnset = std::numeric_limits<float>::quiet_NaN();

    Util::Shared<bool> bandLink = false;       // read by the editor only
    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    std::array<BandState, kBands> bands;
    Kernels::CompressorState state;
    Util::Shared<float> envelopeDecay = 0.0f; // per sample
};

} // namespace DSP
