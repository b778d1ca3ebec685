#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// One pass over a block of samples. Lengths of 0 and less do nothing.
struct BlockKernels {
    /// Replaces what is no number or beyond +-`loudest` by 0; returns how many samples that were.
    int (*silenceGarbage)(float *samples, float loudest, int count);
    /// Largest magnitude; 0 for an empty block. NaN is passed over.
    float (*peak)(const float *samples, int count);
    /// Smallest value, at most `most`.
    float (*least)(const float *values, float most, int count);
    /// out = (left + right) x 0.5 - wave; `right` null: left - wave.
    void (*monoMix)(const float *left, const float *right, const float *wave, float *out, int count);
    /// The arrays may not overlap.
    void (*copy)(const float *source, float *target, int count);
    void (*add)(const float *source, float *target, int count);
    /// out = ((sources[0] + sources[1]) + sources[2]) + sources[3], as far as there are `sourceCount` of
    /// them, 1 to 4.
    void (*sum)(const float *const sources[4], int sourceCount, float *out, int count);
    void (*multiply)(const float *source, float *target, int count);
    void (*scale)(float factor, float *samples, int count);
};

} // namespace DSP::Kernels
