#pragma once
#include <array>

#include "PluginBase/Util/SharedRecord.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/DynamicsKernels.h"
#include "dsp/meter/Extremes.h"
#include "dsp/stages/DelayLine.h"
#include "dsp/stages/DynamicsDesign.h"

namespace DSP {

/// Compressor of all four bands: peak detector linked over the channels, hard knee, attack and release, a
/// second smoothing, 1 ms of look-ahead, make-up gain, bypass and solo.
/// Thread  process: audio, which takes the coefficients once for a block. Meter reads: any, no lock. Setters
///         and setSampleRate: any, under `settingLock`
class Dynamics final : public ComponentImpl<Dynamics> {
public:
    explicit Dynamics(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    void suspend() override;
    /// Processes together all bands of the block that are not null; of a block without bands, `left` and
    /// `right` as the band of setBandIndex.
    void process(const DSP::Block &whole) override;
    void setBandIndex(uint32_t band) { bandIndex = band; }
    void reset() override;
    uint32_t latency() const override;

    /// Smallest gain factor since the last call, make-up gain left out; 1 is no reduction.
    float readGainReduction(uint32_t band) { return bands[band].reduction.read(); }
    /// Largest input magnitudes since the last call.
    void readPeaks(uint32_t band, float &left, float &right);

    bool bandLink() const { return linked; }
    bool setBandLink(bool on);
    float threshold(uint32_t band) const { return settings(band).thresholdDb; }
    float gain(uint32_t band) const { return settings(band).gainDb; }
    float ratio(uint32_t band) const { return settings(band).ratio; }
    float attack(uint32_t band) const { return settings(band).attackMs; }
    float release(uint32_t band) const { return settings(band).releaseMs; }
    bool bypass(uint32_t band) const { return settings(band).bypass; }
    bool solo(uint32_t band) const { return settings(band).solo; }
    bool setThreshold(uint32_t band, float db) { return change(band, &BandSettings::thresholdDb, db); }
    bool setGain(uint32_t band, float db) { return change(band, &BandSettings::gainDb, db); }
    bool setRatio(uint32_t band, float ratio) { return change(band, &BandSettings::ratio, ratio); }
    bool setAttack(uint32_t band, float ms) { return change(band, &BandSettings::attackMs, ms); }
    bool setRelease(uint32_t band, float ms) { return change(band, &BandSettings::releaseMs, ms); }
    bool setBypass(uint32_t band, bool on) { return change(band, &BandSettings::bypass, on); }
    bool setSolo(uint32_t band, bool on) { return change(band, &BandSettings::solo, on); }

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
    struct Band {
        Util::SharedRecord<BandSettings> settings;
        Util::SharedRecord<BandCoefficients> coefficients;
        Meter::Peak peakLeft, peakRight; // of the input
        Meter::Reduction reduction;      // make-up gain left out
    };
    /// Audio state of all bands.
    struct State {
        Kernels::DynamicsState followers;
        std::array<DelayLine, kBands> delayLeft, delayRight; // the look-ahead lines
        std::array<uint8_t, kBands> guardPhases = {};
    };
    /// The samples of the bands to be compressed, null for the others, and what holds for the whole block.
    struct Block {
        float *left[kBands] = {}, *right[kBands] = {};
        std::array<BandCoefficients, kBands> coefficients;
        Kernels::DynamicsCoeffs lanes; // the same, a band in each lane
    };

    void declareParameters();
    BandSettings settings(uint32_t band) const { return bands[band].settings.load(); }
    /// Stores another value and designs the band anew; nothing for the value that it has.
    template <class V>
    bool change(uint32_t band, V BandSettings::*field, V value);
    void designBand(Band &band) { band.coefficients.store(design(band.settings.load(), sampleRate)); }
    void reserveDelays();
    void clearMeters();
    void loadCoefficients(Block &block) const;
    /// Takes out of the block, and silences, the bands that another band's solo shuts.
    void silenceUnsoloed(Block &block, uint32_t frames);
    void compressChunk(const Block &block, uint32_t frames);
    static void report(Band &band, bool bypass, bool stereo, const Kernels::DynamicsPeaks &peaks, uint32_t b);

    uint32_t bandIndex = 0;
    Util::Shared<bool> linked = false;         // read by the editor only
    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    Util::Shared<float> envelopeDecay = 0.0f;  // of the peak detectors, per sample
    std::array<Band, kBands> bands;
    State state;
};

} // namespace DSP
