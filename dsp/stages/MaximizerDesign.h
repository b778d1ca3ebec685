#pragma once
#include <cstdint>

#include "dsp/kernels/MaximizerKernels.h"

namespace DSP {

/// The user's settings of the output limiter.
struct MaximizerSettings {
    float thresholdDb = 0, marginDb = 0;
    float ratio = 1; // part of the saved format; both curves are fixed
    float attackMs = 0, releaseMs = 0;
    bool bypass = false, brickwall = false;
};

/// Coefficients of the output limiter: linear gains and one-pole coefficients per sample.
struct MaximizerCoefficients {
    float threshold, outputGain;
    float envelopeDecay, smoothCoeff;
    Kernels::MaximizerFollower follower;
    uint32_t lookAhead; // brickwall mode: samples between the detector and the scaling
    bool bypass, brickwall;
};

constexpr uint32_t kMaximizerInputDelay = 64;   // length of the line before the detector; delays by 63
constexpr uint32_t kMaximizerOutputDelay = 200; // length of the line before the output; delays by 199
constexpr uint32_t kMaximizerWindow = 64;       // length of the smoothing window in brickwall mode

static_assert(kMaximizerWindow == Kernels::MaximizerKernels::kTaps);
static_assert(kMaximizerOutputDelay == Kernels::MinimumLadder::kWindow);

/// Pure and allocation-free; any thread. Every finite setting gives finite coefficients. In brickwall mode the
/// attack's time constant is always 100 samples; the attack setting changes the look-ahead instead.
MaximizerCoefficients design(const MaximizerSettings &settings, uint32_t sampleRateHz);

} // namespace DSP
