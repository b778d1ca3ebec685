#pragma once
namespace DSP::Kernels {

/// Tables of one Fourier transform of real input, made by FftPlan. The input counts as `points` complex
/// numbers; their transform runs through a first pass of radix 8 and then through `passes`, each from one
/// half of the work buffer to the other (Stockham), and a last step takes even and odd samples apart.
struct FftTables {
    struct Pass {
        int radix;             // 4 or 8
        int stride;            // distance of neighbours in one sub-transform, a multiple of 8
        int groups;            // butterflies of a sub-transform; 1 in the last pass
        const float *twiddles; // for each group but the first, radix - 1 of (8 x re, 8 x im)
    };
    int points; // half the number of real samples
    int passCount;
    Pass passes[4];
    const float *firstTwiddles; // for each 8 groups, 7 of (8 re, 8 im), lanes as fftLaneOrder says
    const float *splitTwiddles; // for each 8 bins k below points / 2, 8 cos and 8 sin of pi k / points
};

/// Where lane l of the first pass stands in memory: its loads take even and odd samples apart within each
/// half of eight lanes, which changes places of the middle pairs.
static constexpr int fftLaneOrder(int lane) { return (lane & 1) | (lane & 2) << 1 | (lane & 4) >> 1; }

/// All buffers start at a multiple of 32 bytes; work has 4 x points + 64 floats.
struct SpectrumKernels {
    /// in: 2 x points samples; out: 2 x points + 2 floats, pairs (re, im) of bins 0 to points. Not scaled.
    void (*transform)(const FftTables &tables, const float *in, float *out, float *work);
    /// Transforms samples x window and raises magnitudes[0..points] to twice the magnitude of each bin, at
    /// most FLT_MAX; NaN counts as nothing.
    void (*raiseMagnitudes)(const FftTables &tables, const float *samples, const float *window,
                            float *magnitudes, float *work);
};

} // namespace DSP::Kernels
