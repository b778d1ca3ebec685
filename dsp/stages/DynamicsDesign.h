#pragma once
#include <cstdint>

namespace DSP {

/// The user's settings of one band's compressor.
struct BandSettings {
    float thresholdDb = 0, gainDb = 0, ratio = 1;
    float attackMs = 0, releaseMs = 0;
    bool bypass = false, solo = false;
};

/// What a block reads of them: linear gains and one-pole coefficients per sample.
struct BandCoefficients {
    float threshold, exponent; // gain = (level / threshold)^exponent from the threshold on
    float attackComplement, releaseCoeff, releaseComplement;
    float smoothCoeff;
    float makeUp;
    bool bypass, solo;
};

/// Pure and allocation-free; any thread. Every finite setting gives finite coefficients.
/// Origin  one pole, c = exp(-1 / (time x rate / 2)): a stated time of T ms is a time constant of T / 2 ms. The
///         smoothing runs at half the shorter time
BandCoefficients design(const BandSettings &settings, uint32_t sampleRateHz);

/// Length of the look-ahead line, 1 ms: the delay is one sample less. At least 1.
uint32_t lookAheadSamples(uint32_t sampleRateHz);

} // namespace DSP
