#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// One pass over a block of samples. A length of 0 does nothing.
struct BlockKernels {
    /// Replaces NaN and anything beyond +-`loudest` with 0; returns the number of samples replaced.
    uint32_t (*silenceGarbage)(float *samples, float loudest, uint32_t count);
    /// Largest magnitude; 0 for an empty block. NaN is passed over.
    float (*peak)(const float *samples, uint32_t count);
    /// Smallest value, at most `most`.
    float (*least)(const float *values, float most, uint32_t count);
    /// out = (left + right) x 0.5 - wave; `right` null: left - wave.
    void (*monoMix)(const float *left, const float *right, const float *wave, float *out, uint32_t count);
    /// The arrays may not overlap.
    void (*copy)(const float *source, float *target, uint32_t count);
    void (*add)(const float *source, float *target, uint32_t count);
    /// out = ((sources[0] + sources[1]) + sources[2]) + sources[3], as far as there are `sourceCount` of
    /// them, 1 to 4.
    void (*sum)(const float *const sources[4], uint32_t sourceCount, float *out, uint32_t count);
    void (*multiply)(const float *source, float *target, uint32_t count);
    void (*scale)(float factor, float *samples, uint32_t count);
};

} // namespace DSP::Kernels
