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

/// What a block reads of them: linear gains, one-pole coefficients per sample, and samples.
struct MaximizerCoefficients {
    float threshold, outputGain;
    float envelopeDecay, smoothCoeff;
    Kernels::MaximizerFollower follower;
    uint32_t lookAhead; // samples between scaling and output, brickwall mode
    bool bypass, brickwall;
};

constexpr uint32_t kMaximizerInputDelay = 64;   // samples of the ring before the detector
constexpr uint32_t kMaximizerOutputDelay = 200; // samples of the ring before the output
constexpr uint32_t kMaximizerWindow = 64;       // samples of the smoothing window of the brickwall mode

static_assert(kMaximizerWindow == Kernels::MaximizerKernels::kTaps);
static_assert(kMaximizerOutputDelay == Kernels::MinimumLadder::kWindow);

/// Pure and allocation-free; any thread. Every finite setting gives finite coefficients. The brickwall mode
/// has an attack of its own, a time constant of 100 samples.
MaximizerCoefficients design(const MaximizerSettings &settings, uint32_t sampleRateHz);

} // namespace DSP
