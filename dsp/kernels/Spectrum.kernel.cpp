#include "dsp/kernels/FftPasses.h"
#include "dsp/kernels/SpectrumKernels.h"

namespace DSP::Kernels::SET {

using V = FloatRegister;

/// The transform of the samples taken as complex numbers, re[k] and im[k], with the first point again at the
/// end.
struct Points {
    const float *re, *im;
};

template <bool windowed>
LANES_OP Points transformComplex(const FftTables &tables, const float *in, const float *window, float *work)
{
    const int points = tables.points, last = tables.passCount - 1;
    float *from = work, *to = work + 2 * points + 32;
    runFirstPass<V, windowed>(tables, in, window, from);
    for (int i = 0; i < last; ++i) {
        if (tables.passes[i].radix == 8)
            runPass<V, 8>(tables.passes[i], from, to);
        else
            runPass<V, 4>(tables.passes[i], from, to);
        float *const read = from;
        from = to;
        to = read;
    }
    const long stride = tables.passes[last].stride, im = points + 16;
    if (tables.passes[last].radix == 8)
        runGroup<V, 8, false, true>(from, 2 * stride, to, stride, im, nullptr);
    else
        runGroup<V, 4, false, true>(from, 2 * stride, to, stride, im, nullptr);
    to[points] = to[0];
    to[im + points] = to[im];
    return {to, to + im};
}

/// Twice the bins k of the real transform and the conjugates of twice the bins points - k, in the lanes from
/// k on: with the parts even and odd that an exchange of X[k] and X[points - k]* leaves or negates, bin k is
/// even - i w odd.
LANES_OP void splitReal(const FftTables &tables, Points x, int k, Complex<V> &low, Complex<V> &high)
{
    const V xr = V::loadAligned(x.re + k), xi = V::loadAligned(x.im + k);
    const int mirrored = tables.points - k - (V::kLanes - 1);
    const V yr = reverse(V::load(x.re + mirrored)), yi = reverse(V::load(x.im + mirrored));
    const V c = V::loadAligned(tables.cosines + k), s = V::loadAligned(tables.sines + k);
    const Complex<V> even = {xr + yr, xi - yi};
    const V dr = xr - yr, di = xi + yi;
    const Complex<V> odd = {di * c - dr * s, di * s + dr * c};
    low = {even.re + odd.re, even.im - odd.im};
    high = {even.re - odd.re, even.im + odd.im};
}

static void raiseMagnitudes(const FftTables &tables, const float *samples, const float *window,
                            float *magnitudes, float *work)
{
    const Points x = transformComplex<true>(tables, samples, window, work);
    const V most = V::splat(__FLT_MAX__);
    const int points = tables.points;
    for (int k = 0; k < points / 2; k += V::kLanes) {
        Complex<V> low, high;
        splitReal(tables, x, k, low, high);
        const V below = min(most, sqrt(low.re * low.re + low.im * low.im));
        storeAligned(magnitudes + k, max(below, V::loadAligned(magnitudes + k)));
        float *const mirror = magnitudes + points - k - (V::kLanes - 1);
        const V above = min(most, sqrt(high.re * high.re + high.im * high.im));
        store(mirror, max(reverse(above), V::load(mirror)));
    }
    const float re = x.re[points / 2], im = x.im[points / 2];
    const float size = 2 * __builtin_sqrtf(re * re + im * im), held = size < __FLT_MAX__ ? size : __FLT_MAX__;
    if (held > magnitudes[points / 2]) magnitudes[points / 2] = held;
}

static void transform(const FftTables &tables, const float *in, float *out, float *work)
{
    const Points x = transformComplex<false>(tables, in, nullptr, work);
    const V half = V::splat(0.5f);
    const int points = tables.points;
    for (int k = 0; k < points / 2; k += V::kLanes) {
        Complex<V> low, high;
        splitReal(tables, x, k, low, high);
        storeInterleaved(out + 2 * k, low.re * half, low.im * half);
        storeInterleaved(out + 2 * (points - k - (V::kLanes - 1)), reverse(high.re * half),
                         reverse(-(high.im * half)));
    }
    out[points] = x.re[points / 2];
    out[points + 1] = -x.im[points / 2];
    out[1] = out[2 * points + 1] = 0;
}

extern const SpectrumKernels spectrumKernels;
const SpectrumKernels spectrumKernels = {.transform = transform, .raiseMagnitudes = raiseMagnitudes};

} // namespace DSP::Kernels::SET
