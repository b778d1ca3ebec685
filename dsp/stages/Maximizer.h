#pragma once
#include <array>
#include <limits>

#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/LimiterKernels.h"
#include "dsp/stages/DelayLine.h"
#include "dsp/stages/SlidingMinimum.h"

namespace DSP {

/// Output limiter: what exceeds the threshold is turned down, and a gain of margin - threshold follows.
/// Soft mode follows a 20:1 curve; brickwall mode never lets a sample over. Both delay by 262 samples.
/// Thread  process, reset: under `lock`. setSampleRate: under `settingLock` and `lock`. Setters of threshold,
///         margin, attack and release: any, under `settingLock`. Other setters: any, no lock
class Maximizer final : public ComponentImpl<Maximizer> {
public:
    explicit Maximizer(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    uint32_t process(uint32_t frames, float *left, float *right) override;
    void reset() override;
    uint32_t latency() const override { return kInputDelay - 1 + kOutputDelay - 1; }

    float threshold() const { return thresholdDb; }
    float margin() const { return marginDb; }
    float getRatio() const { return ratio; }
    float attack() const { return attackMs; }
    float release() const { return releaseMs; }
    bool getBypass() const { return bypass; }
    bool getBrickwall() const { return brickwall; }
    void setThreshold(float db);
    void setMargin(float db);
    /// Kept with its range; the curve of both modes is fixed and does not read it.
    void setRatio(float value);
    void setAttack(float ms);
    void setRelease(float ms);
    void setBypass(bool on) { bypass = on; }
    void setBrickwall(bool on) { brickwall = on; }

    /// Smallest gain factor since the last call, without the lift to the margin; 1 is no reduction.
    float readGainReduction() { return reportedGain.exchange(1.0f); }

    /// Indices in the parameter lists.
    struct Param {
        enum Float : uint32_t { threshold, margin, ratio, attack, release };
        enum Bool : uint32_t { bypass, brickwall };
    };

    static constexpr uint32_t kInputDelay = 64;   // samples of the ring before the detector
    static constexpr uint32_t kOutputDelay = 200; // samples of the ring before the output
    static constexpr uint32_t kWindow = 64;       // samples of the smoothing window of the brickwall mode

private:
    /// Block-long copies of the channels' delay lines: where the new samples stand, older ones before them.
    struct Lines {
        float *left, *right; // right is null for mono
    };
    /// What holds for a whole block.
    struct Setting {
        bool bypass, brickwall;
        float threshold, outputGain; // linear
        Kernels::LimiterFollower follower;
        uint32_t lookAhead; // samples
    };

    void declareParameters();
    void deriveOutputGain();
    void deriveAttack();
    void deriveRelease();
    Setting present() const;
    void processChunk(const Setting &now, uint32_t frames, float *left, float *right);
    /// Gains from envelopes, in place, then the delayed samples scaled by them.
    void processSoft(const Setting &now, uint32_t frames, const Lines &lines, float *gains, float *left,
                     float *right);
    void processBrickwall(const Setting &now, uint32_t frames, const Lines &lines, float *gains, float *left,
                          float *right);
    void report(const float *gains, uint32_t frames);

    static constexpr uint32_t kChunk = Kernels::LimiterKernels::kMostFrames;
    static constexpr float kUnset = std::numeric_limits<float>::quiet_NaN();

    Util::Shared<bool> bypass = false, brickwall = false;
    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    // not a number until the constructor installs the defaults, so that every setter derives its values
    Util::Shared<float> thresholdDb = kUnset, marginDb = kUnset, ratio = kUnset, attackMs = kUnset;
    Util::Shared<float> releaseMs = kUnset;
    Util::Shared<float> thresholdLinear = 1.0f, inverseRatio = 1.0f, outputGain = 1.0f;
    Util::Shared<float> attackCoeff = 0.0f, releaseCoeff = 0.0f;
    float brickwallAttackCoeff;
    Util::Shared<uint32_t> lookAhead = kWindow; // samples between scaling and output, brickwall mode
    float envelope = 0.0f, envelopeDecay = 0.0f;
    float followedGain = 1.0f, smoothedGain = 1.0f;
    float smoothCoeff = 1.0f;
    DelayLine lineLeft, lineRight; // both delays in one: the detector reads after the first of them
    SlidingMinimum gainLine;
    DelayLine gainRing;
    alignas(32) std::array<float, kWindow / 2> gainWindow; // its second half mirrors this one
    Util::Shared<float> reportedGain = 1.0f;
};

} // namespace DSP
