#pragma once
#include <cstddef>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/kernels/Kernels.h"

namespace DSP {

/// Forward Fourier transform of real samples, with its tables made once.
/// Shape   2^order samples, order kLeastOrder to kMostOrder; another order counts as the nearer end. Buffers
///         start at a multiple of 32 bytes; none may be another one
/// Unit    negative exponent, not scaled: bin k is the sum of x[n] e^(-2 pi i k n / length)
/// Errors  relative to the largest bin about 1e-7
/// Cost    raiseMagnitudes of 4096 samples: 23 300 instructions with AVX2, 58 400 with SSE2
/// Thread  constructor: allocates. All else: any, also several at once with a work buffer each; no allocation
class FftPlan {
public:
    static constexpr int kLeastOrder = 7, kMostOrder = 13;

    explicit FftPlan(int order, const Kernels::Table &kernels = Kernels::active());

    int length() const { return 2 * tables.points; }
    /// Floats of the work buffer.
    size_t workLength() const { return 4 * static_cast<size_t>(tables.points) + 64; }

    /// Writes length() + 2 floats: pairs (re, im) of bins 0 to length() / 2, both ends with an im of 0.
    void forward(const float *in, float *out, float *work) const { kernels.transform(tables, in, out, work); }

    /// Raises magnitudes[0..length() / 2] to twice the magnitude of the bins of samples x window where those
    /// are larger, at most FLT_MAX, so that no infinity stays; a NaN raises nothing. A scale belongs in the
    /// window: 1 / length() in it shows a full-scale sine at its amplitude times the window's mean.
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
