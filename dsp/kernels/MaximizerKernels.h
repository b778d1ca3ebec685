#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// One-pole movements of the limiter's gain. Linear gains.
struct MaximizerFollower {
    float attackCoeff, attackComplement; // feedback and feed of the way down
    float releaseCoeff, releaseComplement;
};

/// Minima over spans that double: step k takes them over the last 2^k values, and keeps the tail of its past
/// that the next step reaches back to.
struct MinimumLadder {
    static constexpr uint32_t kSteps = 8;    // spans of 1 to 128
    static constexpr uint32_t kWindow = 200; // values
    static constexpr uint32_t kLongestTail = kWindow - 128;
    static constexpr uint32_t kTail[kSteps] = {1, 2, 4, 8, 16, 32, 64, kLongestTail};
    alignas(32) float tails[kSteps][kLongestTail];
};

struct MaximizerKernels {
    /// Most frames that one call takes. Arrays are 32-byte aligned and hold that many.
    static constexpr uint32_t kMostFrames = 64;
    static constexpr uint32_t kTaps = 64;

    /// Peak envelope over both channels (`right` null for mono): up at once, down by `decay`.
    void (*detect)(const float *left, const float *right, float decay, float &envelope, float *envelopes,
                   uint32_t frames);

    /// Soft mode: envelopes become gains by (envelope / threshold)^exponent, `follower` and a last smoothing.
    void (*softGains)(float threshold, float exponent, const MaximizerFollower &follower, float smoothCoeff,
                      float &followed, float &smoothed, float *gains, uint32_t frames);

    /// Brickwall mode, first step: envelopes become the gains that would just hold the threshold.
    void (*holdingGains)(float threshold, float *gains, uint32_t frames);
    /// Second step: the least of the last kWindow values, in place.
    void (*slidingMinimum)(MinimumLadder &ladder, float *values, uint32_t frames);
    /// Third step, in place: attack and release that never rise over the minimum.
    void (*followMinimum)(const MaximizerFollower &follower, float &followed, float *gains, uint32_t frames);
    /// Last step: weighted sum of kTaps gains; `gains` has kTaps - 1 older ones before it. weights[0] is that
    /// of the newest two, weights[j] that of the gains 1 + j and 64 - j back.
    void (*weightedSum)(const float weights[kTaps / 2], const float *gains, float *sums, uint32_t frames);

    /// out[i] = samples[i] x (gains[i] x factor); out may be samples.
    void (*apply)(const float *samples, const float *gains, float factor, float *out, uint32_t frames);
};

} // namespace DSP::Kernels
