#pragma once
#include <cstdint>

namespace DSP {

/// The user's settings of one band's compressor.
struct BandSettings {
    float thresholdDb = 0, gainDb = 0, ratio = 1;
    float attackMs = 0, releaseMs = 0;
    bool bypass = false, solo = false;
};

/// Coefficients of one band's compressor: linear gains and one-pole coefficients per sample.
struct BandCoefficients {
    float threshold, exponent; // gain = (level / threshold)^exponent at and above the threshold
    float attackComplement, releaseCoeff, releaseComplement;
    float smoothCoeff;
    float makeUp;
    bool bypass, solo;
};

/// Pure and allocation-free; any thread. Every finite setting gives finite coefficients.
/// Origin  one-pole smoother, c = exp(-1 / (time x rate / 2)): the time constant is half the stated time. The
///         gain smoother's stated time is half the shorter of attack and release
BandCoefficients design(const BandSettings &settings, uint32_t sampleRateHz);

/// Length of the look-ahead line in samples: 1 ms, at least 1. The delay is one sample shorter.
uint32_t lookAheadSamples(uint32_t sampleRateHz);

} // namespace DSP
