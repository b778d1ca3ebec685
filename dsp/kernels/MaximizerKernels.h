#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// Gain follower: the coefficient weights the previous gain, its complement (1 - coefficient) the target.
struct MaximizerFollower {
    float attackCoeff, attackComplement; // falling gain
    float releaseCoeff, releaseComplement;
};

/// State of the sliding minimum. Step k holds the minima of 2^k values; its tail keeps as many of them as the
/// next step needs.
struct MinimumLadder {
    static constexpr uint32_t kSteps = 8;    // spans of 1 to 128
    static constexpr uint32_t kWindow = 200; // values
    static constexpr uint32_t kLongestTail = kWindow - 128;
    static constexpr uint32_t kTail[kSteps] = {1, 2, 4, 8, 16, 32, 64, kLongestTail};
    alignas(32) float tails[kSteps][kLongestTail];
};

struct MaximizerKernels {
    /// Largest number of frames per call. Arrays are 32-byte aligned and have this length.
    static constexpr uint32_t kMostFrames = 64;
    static constexpr uint32_t kTaps = 64;

    /// Stereo-linked peak detector (`right` null for mono): instant attack, decay by a factor per sample.
    void (*detect)(const float *left, const float *right, float decay, float &envelope, float *envelopes,
                   uint32_t frames);

    /// Soft mode, in place: turns envelopes into gains (envelope / threshold)^exponent, then applies `follower`
    /// and a one-pole smoother.
    void (*softGains)(float threshold, float exponent, const MaximizerFollower &follower, float smoothCoeff,
                      float &followed, float &smoothed, float *gains, uint32_t frames);

    /// Brickwall mode, step 1, in place: turns envelopes into gains of min(1, threshold / envelope).
    void (*holdingGains)(float threshold, float *gains, uint32_t frames);
    /// Step 2, in place: minimum of the last MinimumLadder::kWindow values.
    void (*slidingMinimum)(MinimumLadder &ladder, float *values, uint32_t frames);
    /// Step 3, in place: attack and release; the result never exceeds the minimum.
    void (*followMinimum)(const MaximizerFollower &follower, float &followed, float *gains, uint32_t frames);
    /// Step 4: FIR smoothing with kTaps weights. kTaps - 1 older gains must lie directly before `gains`.
    /// weights[0] applies to the newest two gains; weights[j] to the gains delayed by 1 + j and 64 - j.
    void (*weightedSum)(const float weights[kTaps / 2], const float *gains, float *sums, uint32_t frames);

    /// out[i] = samples[i] x (gains[i] x factor); `out` may equal `samples`.
    void (*apply)(const float *samples, const float *gains, float factor, float *out, uint32_t frames);
};

} // namespace DSP::Kernels
