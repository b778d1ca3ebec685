#include "dsp/kernels/FftPasses.h"
#include "dsp/kernels/SpectrumKernels.h"

namespace DSP::Kernels::SET {

using V = FloatRegister;

/// Result of the complex FFT. The first point is repeated at the end.
struct Points {
    const float *re, *im;
};

/// Constant strides let the compiler address all inputs from one pointer. FftPlan uses no other strides.
LANES_OP void runInnerPass(const FftTables::Pass &pass, ptrdiff_t points, const float *from, float *to)
{
    if (pass.radix == 8)
        pass.stride == 8 ? runPass<V, 8, 8>(pass, points, from, to)
                         : runPass<V, 8, 64>(pass, points, from, to);
    else
        pass.stride == 8 ? runPass<V, 4, 8>(pass, points, from, to)
                         : runPass<V, 4, 64>(pass, points, from, to);
}

template <bool windowed>
LANES_OP Points transformComplex(const FftTables &tables, const float *in, const float *window, float *work)
{
    const int points = tables.points, last = tables.passCount - 1;
    float *from = work, *to = work + 2 * points + 32;
    runFirstPass<V, windowed>(tables, in, window, from);
    for (int i = 0; i < last; ++i) {
        runInnerPass(tables.passes[i], points, from, to);
        float *const read = from;
        from = to;
        to = read;
    }
    const ptrdiff_t im = points + 16;
    if (tables.passes[last].radix == 8)
        runLastPass<V, 8>(points / 8, from, to, im);
    else
        runLastPass<V, 4>(points / 4, from, to, im);
    to[points] = to[0];
    to[im + points] = to[im];
    return {to, to + im};
}

/// Computes twice the real FFT's bins from k on (`low`), and twice the conjugates of the bins points - k (`high`).
/// With even = X[k] + X[points - k]*, odd = X[k] - X[points - k]* and w = e^(-i pi k / points), twice bin k is
/// even - i w odd.
LANES_OP void splitReal(Points x, ptrdiff_t k, ptrdiff_t mirrored, Twiddles twiddles, Complex<V> &low,
                        Complex<V> &high)
{
    const V xr = V::loadAligned(x.re + k), xi = V::loadAligned(x.im + k);
    const V yr = reverse(V::load(x.re + mirrored)), yi = reverse(V::load(x.im + mirrored));
    const Complex<V> even = {xr + yr, xi - yi};
    const Complex<V> odd = times(Complex<V>{xi + yi, xr - yr}, twiddles, 0);
    low = {even.re + odd.re, even.im - odd.im};
    high = {even.re - odd.re, even.im + odd.im};
}

/// Calls take(k, mirrored, low, high) for every bin except the middle one.
template <class Take>
LANES_OP void splitAll(const FftTables &tables, Points x, Take take)
{
    const ptrdiff_t middle = tables.points / 2;
    ptrdiff_t mirrored = tables.points - (V::kLanes - 1);
    Twiddles twiddles = Twiddles::from(tables.splitTwiddles);
    for (ptrdiff_t k = 0; k < middle; twiddles.one += 16, twiddles.other += 16)
#pragma GCC unroll 2
        for (int half = 0; half < 8; half += V::kLanes, k += V::kLanes, mirrored -= V::kLanes) {
            Complex<V> low, high;
            splitReal(x, k, mirrored, {twiddles.one + half, twiddles.other + half}, low, high);
            take(k, mirrored, low, high);
        }
}

static void raiseMagnitudes(const FftTables &tables, const float *samples, const float *window,
                            float *magnitudes, float *work)
{
    const Points x = transformComplex<true>(tables, samples, window, work);
    const V most = V::splat(__FLT_MAX__);
    const int points = tables.points;
    splitAll(tables, x, [=](ptrdiff_t k, ptrdiff_t mirrored, Complex<V> low, Complex<V> high) {
        const V below = sqrt(low.re * low.re + low.im * low.im);
        storeAligned(magnitudes + k, min(max(below, V::loadAligned(magnitudes + k)), most));
        const V above = reverse(sqrt(high.re * high.re + high.im * high.im));
        store(magnitudes + mirrored, min(max(above, V::load(magnitudes + mirrored)), most));
    });
    const float re = x.re[points / 2], im = x.im[points / 2];
    const float size = 2 * __builtin_sqrtf(re * re + im * im), held = size < __FLT_MAX__ ? size : __FLT_MAX__;
    if (held > magnitudes[points / 2]) magnitudes[points / 2] = held;
}

static void transform(const FftTables &tables, const float *in, float *out, float *work)
{
    const Points x = transformComplex<false>(tables, in, nullptr, work);
    const V half = V::splat(0.5f);
    const int points = tables.points;
    splitAll(tables, x, [=](ptrdiff_t k, ptrdiff_t mirrored, Complex<V> low, Complex<V> high) {
        storeInterleaved(out + 2 * k, low.re * half, low.im * half);
        storeInterleaved(out + 2 * mirrored, reverse(high.re * half), reverse(-(high.im * half)));
    });
    out[points] = x.re[points / 2];
    out[points + 1] = -x.im[points / 2];
    out[1] = out[2 * points + 1] = 0;
}

extern const SpectrumKernels spectrumKernels;
const SpectrumKernels spectrumKernels = {.transform = transform, .raiseMagnitudes = raiseMagnitudes};

} // namespace DSP::Kernels::SET
