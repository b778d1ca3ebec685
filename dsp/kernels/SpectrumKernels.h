#pragma once
namespace DSP::Kernels {

/// Tables of a real-input FFT, made by FftPlan. The kernels treat the input as `points` complex numbers. After a
/// first pass of radix 8, the Stockham `passes` alternate between the halves of the work buffer. A last step splits
/// the result into the transforms of the even and odd samples.
struct FftTables {
    struct Pass {
        int radix;             // 4 or 8
        int stride;            // distance of neighbours in one sub-transform, a multiple of 8
        int groups;            // butterflies per sub-transform; 1 in the last pass
        const float *twiddles; // per group except the first: radix - 1 blocks of 8 equal re, 8 equal im
    };
    int points; // half the number of real samples
    int passCount;
    Pass passes[4];
    const float *firstTwiddles; // per 8 groups: 7 blocks of 8 re, 8 im, in the order of fftLaneOrder
    const float *splitTwiddles; // per 8 bins k < points / 2: 8 cos, 8 sin of pi k / points
};

/// Memory position of lane l in the first pass. Its loads separate even and odd samples within each half of eight
/// lanes, which swaps the middle pairs of lanes.
static constexpr int fftLaneOrder(int lane) { return (lane & 1) | (lane & 2) << 1 | (lane & 4) >> 1; }

/// All buffers are 32-byte aligned; `work` has 4 x points + 64 floats.
struct SpectrumKernels {
    /// in: 2 x points samples; out: 2 x points + 2 floats, unscaled pairs (re, im) of bins 0 to points.
    void (*transform)(const FftTables &tables, const float *in, float *out, float *work);
    /// Peak hold: raises magnitudes[k] to 2 |bin k of samples x window|, for k up to points. Clips to FLT_MAX and
    /// ignores NaN.
    void (*raiseMagnitudes)(const FftTables &tables, const float *samples, const float *window,
                            float *magnitudes, float *work);
};

} // namespace DSP::Kernels
