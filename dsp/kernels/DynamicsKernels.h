#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// Coefficients of four compressors, one a lane. Linear gains; the curve is hard-kneed.
struct DynamicsCoeffs {
    alignas(16) float threshold[4], exponent[4]; // gain = (level / threshold)^exponent from the threshold on
    alignas(16) float attackComplement[4], releaseCoeff[4], releaseComplement[4];
    alignas(16) float smoothCoeff[4];
    float envelopeDecay; // per sample
};
struct DynamicsState {
    alignas(16) float envelope[4], followed[4], smoothed[4];
};
struct DynamicsPeaks {
    float left[4], right[4]; // largest input magnitudes of the block
    float smallestGain[4];
};

struct DynamicsKernels {
    /// Most frames that one call takes.
    static constexpr uint32_t kMostFrames = 64;

    /// From the bands' samples to their gains, make-up left out. A null `left[b]` is a band of silence; a
    /// null `right[b]` makes it mono. `gains[b]` are arrays of kMostFrames, 32-byte aligned.
    void (*computeGains)(const DynamicsCoeffs &coeffs, DynamicsState &state, const float *const left[4],
                         const float *const right[4], float *const gains[4], DynamicsPeaks &peaks,
                         uint32_t frames);

    /// Delays `samples` of `channels` (1 or 2) by `delay` through `lines`, which hold that many older samples
    /// before them and take the new ones, multiplies by gains[i] x makeUp (by 1 for null gains) and adds the
    /// guards.
    void (*applyGains)(float *const samples[2], float *const lines[2], const float *const guards[2],
                       uint32_t channels, uint32_t delay, const float *gains, float makeUp, uint32_t frames);
};

} // namespace DSP::Kernels
