#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// Operations on a block of samples. A length of 0 does nothing.
struct BlockKernels {
    /// Replaces NaN and anything beyond +-`loudest` with 0; returns the number of samples replaced.
    uint32_t (*silenceGarbage)(float *samples, float loudest, uint32_t count);
    /// Returns the largest magnitude; 0 for an empty block. Ignores NaN.
    float (*peak)(const float *samples, uint32_t count);
    /// Returns the smallest of the values and `most`. Ignores NaN.
    float (*least)(const float *values, float most, uint32_t count);
    /// out = (left + right) x 0.5 - wave, or left - wave if `right` is null.
    void (*monoMix)(const float *left, const float *right, const float *wave, float *out, uint32_t count);
    /// The arrays may not overlap.
    void (*copy)(const float *source, float *target, uint32_t count);
    void (*add)(const float *source, float *target, uint32_t count);
    /// out = ((sources[0] + sources[1]) + sources[2]) + sources[3], using the first `sourceCount` (1 to 4) only.
    void (*sum)(const float *const sources[4], uint32_t sourceCount, float *out, uint32_t count);
    void (*multiply)(const float *source, float *target, uint32_t count);
    void (*scale)(float factor, float *samples, uint32_t count);
};

} // namespace DSP::Kernels
