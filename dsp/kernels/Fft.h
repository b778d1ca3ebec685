#pragma once
#include <cstddef>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/kernels/Kernels.h"

namespace DSP {

/// Forward FFT of real samples with precomputed tables.
/// Shape   2^order samples; order is clamped to kLeastOrder ... kMostOrder. Buffers are 32-byte aligned and do
///         not overlap
/// Unit    bin k is the sum of x[n] e^(-2 pi i k n / length), not scaled
/// Errors  about 1e-7 of the largest bin
/// Cost    raiseMagnitudes of 4096 samples: 23 300 instructions with AVX2, 58 400 with SSE2
/// Thread  constructor: allocates. Other functions: any, concurrently with a work buffer each; no allocation
class FftPlan {
public:
    static constexpr int kLeastOrder = 7, kMostOrder = 13;

    explicit FftPlan(int order, const Kernels::Table &kernels = Kernels::active());

    int length() const { return 2 * tables.points; }
    /// Length of the work buffer in floats.
    size_t workLength() const { return 4 * static_cast<size_t>(tables.points) + 64; }

    /// Writes length() + 2 floats: pairs (re, im) of bins 0 to length() / 2. im is 0 at both ends.
    void forward(const float *in, float *out, float *work) const { kernels.transform(tables, in, out, work); }

    /// Peak hold per bin: magnitudes[k] = max(magnitudes[k], 2 |bin k of samples x window|) for k up to
    /// length() / 2. Clips to FLT_MAX and ignores NaN. To scale, scale the window: with a factor of 1 / length(),
    /// a sine reads as its amplitude times the mean of the unscaled window.
    void raiseMagnitudes(const float *samples, const float *window, float *magnitudes, float *work) const
    {
        kernels.raiseMagnitudes(tables, samples, window, magnitudes, work);
    }

private:
    void makeFirstTwiddles();
    void makePasses();
    void makeSplitTwiddles();

    const Kernels::SpectrumKernels &kernels;
    Kernels::FftTables tables = {};
    Util::AlignedBuffer<float> firstTwiddles, passTwiddles, splitTwiddles;
};

} // namespace DSP
