#pragma once
#include <array>

#include "PluginBase/Util/SharedRecord.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/MaximizerKernels.h"
#include "dsp/meter/Extremes.h"
#include "dsp/stages/DelayLine.h"
#include "dsp/stages/MaximizerDesign.h"
#include "dsp/stages/SlidingMinimum.h"

namespace DSP {

/// Output limiter: reduces the level above the threshold, then applies a gain of margin - threshold dB. Soft mode
/// compresses at 20:1; brickwall mode never exceeds the margin. Both delay by 262 samples.
/// Thread  process: audio, under `lock`. reset: any, takes `lock`. setSampleRate: takes `settingLock`, then
///         `lock`. Setters: any, take `settingLock`
class Maximizer final : public ComponentImpl<Maximizer> {
public:
    explicit Maximizer(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    void process(const Block &block) override;
    void reset() override;
    uint32_t latency() const override { return kMaximizerInputDelay - 1 + kMaximizerOutputDelay - 1; }

    float threshold() const { return settings.load().thresholdDb; }
    float margin() const { return settings.load().marginDb; }
    float ratio() const { return settings.load().ratio; }
    float attack() const { return settings.load().attackMs; }
    float release() const { return settings.load().releaseMs; }
    bool bypass() const { return settings.load().bypass; }
    bool brickwall() const { return settings.load().brickwall; }
    bool setThreshold(float db) { return change(&MaximizerSettings::thresholdDb, db); }
    bool setMargin(float db) { return change(&MaximizerSettings::marginDb, db); }
    bool setRatio(float value) { return change(&MaximizerSettings::ratio, value); }
    bool setAttack(float ms) { return change(&MaximizerSettings::attackMs, ms); }
    bool setRelease(float ms) { return change(&MaximizerSettings::releaseMs, ms); }
    bool setBypass(bool on) { return change(&MaximizerSettings::bypass, on); }
    bool setBrickwall(bool on) { return change(&MaximizerSettings::brickwall, on); }

    /// Returns the smallest linear gain since the last call, without the output gain; 1 means no reduction.
    float readGainReduction() { return reduction.read(); }

    /// Indices in the parameter lists.
    struct Param {
        enum Float : uint32_t { threshold, margin, ratio, attack, release };
        enum Bool : uint32_t { bypass, brickwall };
    };

private:
    static constexpr uint32_t kChunk = Kernels::MaximizerKernels::kMostFrames;

    /// The block's new samples in the delay lines; the history lies directly before them.
    struct Lines {
        float *left, *right; // right is null for mono
    };
    struct State {
        float envelope = 0.0f, followedGain = 1.0f, smoothedGain = 1.0f;
        DelayLine lineLeft, lineRight; // input and output delay; the detector reads between them
        SlidingMinimum gainLine;
        DelayLine gainRing;
    };

    void declareParameters();
    /// Stores the value and updates the coefficients; returns false if the value is unchanged.
    template <class V>
    bool change(V MaximizerSettings::*field, V value);
    void processChunk(const MaximizerCoefficients &now, uint32_t frames, float *left, float *right);
    /// Turns the envelopes in `gains` into gains, in place, then writes the delayed, scaled samples.
    void processSoft(const MaximizerCoefficients &now, uint32_t frames, const Lines &lines, float *gains,
                     float *left, float *right);
    void processBrickwall(const MaximizerCoefficients &now, uint32_t frames, const Lines &lines, float *gains,
                          float *left, float *right);
    void report(const float *gains, uint32_t frames);

    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    Util::SharedRecord<MaximizerSettings> settings;
    Util::SharedRecord<MaximizerCoefficients> coefficients;
    State state;
    alignas(32) std::array<float, kMaximizerWindow / 2> gainWindow; // first half of a symmetric window
    Meter::Reduction reduction;
};

} // namespace DSP
