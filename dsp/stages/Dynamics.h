#pragma once
#include <array>

#include "PluginBase/Util/SharedRecord.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/DynamicsKernels.h"
#include "dsp/meter/Extremes.h"
#include "dsp/stages/DelayLine.h"
#include "dsp/stages/DynamicsDesign.h"

namespace DSP {

/// Four-band compressor: stereo-linked peak detector, hard knee, attack and release, one-pole gain smoother,
/// 1 ms of look-ahead, make-up gain, bypass and solo.
/// Thread  process: audio; loads the coefficients once per block. Meter reads: any, no lock. Setters and
///         setSampleRate: any, take `settingLock`
class Dynamics final : public ComponentImpl<Dynamics> {
public:
    explicit Dynamics(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    void suspend() override;
    /// Processes all non-null bands of the block. If the block has no bands, processes `left` and `right` as the
    /// band given by setBandIndex.
    void process(const DSP::Block &whole) override;
    void setBandIndex(uint32_t band) { bandIndex = band; }
    void reset() override;
    uint32_t latency() const override;

    /// Returns the smallest linear gain since the last call, without make-up gain; 1 means no reduction.
    float readGainReduction(uint32_t band) { return bands[band].reduction.read(); }
    /// Returns the input peaks since the last call, linear.
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
        Meter::Reduction reduction;      // without make-up gain
    };
    struct State {
        Kernels::DynamicsState followers;
        std::array<DelayLine, kBands> delayLeft, delayRight; // look-ahead
        std::array<uint8_t, kBands> guardPhases = {};
    };
    /// Samples and coefficients of one block; bands that are not compressed are null.
    struct Block {
        float *left[kBands] = {}, *right[kBands] = {};
        std::array<BandCoefficients, kBands> coefficients;
        Kernels::DynamicsCoeffs lanes; // the same coefficients, one band per lane
    };

    void declareParameters();
    BandSettings settings(uint32_t band) const { return bands[band].settings.load(); }
    /// Stores the value and redesigns the band; returns false if the value is unchanged.
    template <class V>
    bool change(uint32_t band, V BandSettings::*field, V value);
    void designBand(Band &band) { band.coefficients.store(design(band.settings.load(), sampleRate)); }
    void reserveDelays();
    void clearMeters();
    void loadCoefficients(Block &block) const;
    /// If any band is soloed, silences the other bands and removes them from the block.
    void silenceUnsoloed(Block &block, uint32_t frames);
    void compressChunk(const Block &block, uint32_t frames);
    static void report(Band &band, bool bypass, bool stereo, const Kernels::DynamicsPeaks &peaks, uint32_t b);

    uint32_t bandIndex = 0;
    Util::Shared<bool> linked = false;         // read by the editor only
    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    Util::Shared<float> envelopeDecay = 0.0f;  // peak detectors' factor per sample
    std::array<Band, kBands> bands;
    State state;
};

} // namespace DSP
