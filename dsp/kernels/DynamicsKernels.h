#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// Coefficients of four hard-knee compressors, one per lane. Gains are linear.
struct DynamicsCoeffs {
    alignas(16) float threshold[4], exponent[4]; // gain = (level / threshold)^exponent at and above threshold
    alignas(16) float attackComplement[4], releaseCoeff[4], releaseComplement[4];
    alignas(16) float smoothCoeff[4];
    float envelopeDecay; // per sample
};
struct DynamicsState {
    alignas(16) float envelope[4], followed[4], smoothed[4];
};
struct DynamicsPeaks {
    float left[4], right[4]; // input peaks of the block
    float smallestGain[4];
};

struct DynamicsKernels {
    /// Largest number of frames per call.
    static constexpr uint32_t kMostFrames = 64;

    /// Computes the bands' gains, without make-up gain. A band with a null `left[b]` is silent, one with a null
    /// `right[b]` mono. `gains[b]` are arrays of kMostFrames floats, 32-byte aligned.
    void (*computeGains)(const DynamicsCoeffs &coeffs, DynamicsState &state, const float *const left[4],
                         const float *const right[4], float *const gains[4], DynamicsPeaks &peaks,
                         uint32_t frames);

    /// Delays `samples` of 1 or 2 channels by `delay`, multiplies them by gains[i] x makeUp (by 1 if `gains` is
    /// null) and adds the guards. Writes the new samples to `lines`; the `delay` previous samples must lie directly
    /// before each line.
    void (*applyGains)(float *const samples[2], float *const lines[2], const float *const guards[2],
                       uint32_t channels, uint32_t delay, const float *gains, float makeUp, uint32_t frames);
};

} // namespace DSP::Kernels
