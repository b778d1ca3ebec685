#pragma once
#include <stddef.h>

#include "dsp/kernels/Lanes.h"
#include "dsp/kernels/SpectrumKernels.h"

/// Passes of the complex FFT, inlined in the kernels; V is the variant's float register. Only the transposition
/// in the first pass exchanges lanes, so four and eight lanes give the same bits.
/// Shape   between passes, points are stored in blocks of 8 re and 8 im
/// Method  Stockham auto-sort FFT, decimation in frequency. For group p, offset q and j < r, a pass of radix r
///         transforms x[q + stride (p + groups j)] to y[q + stride (r p + k)] = DFT_r(x)[k] w^(p k).
///         Van Loan, "Computational Frameworks for the FFT", ch. 1
namespace DSP::Kernels::SET {

template <class V>
struct Complex {
    V re, im;
};

template <class V>
LANES_OP Complex<V> operator+(Complex<V> a, Complex<V> b)
{
    return {a.re + b.re, a.im + b.im};
}
template <class V>
LANES_OP Complex<V> operator-(Complex<V> a, Complex<V> b)
{
    return {a.re - b.re, a.im - b.im};
}
/// a + i b and a - i b.
template <class V>
LANES_OP Complex<V> plusTurned(Complex<V> a, Complex<V> b)
{
    return {a.re - b.im, a.im + b.re};
}
template <class V>
LANES_OP Complex<V> minusTurned(Complex<V> a, Complex<V> b)
{
    return {a.re + b.im, a.im - b.re};
}

/// Two pointers to the same blocks of 8 re and 8 im. Because the compiler cannot see that they are equal, it
/// uses memory operands for both uses of a twiddle factor instead of a register.
struct Twiddles {
    const float *one, *other;
    LANES_OP Twiddles from(const float *blocks)
    {
        const float *same = blocks;
        asm("" : "+r"(same));
        return {blocks, same};
    }
};
template <class V>
LANES_OP Complex<V> times(Complex<V> a, Twiddles w, int block)
{
    const V re = V::loadAligned(w.one + 16 * block), im = V::loadAligned(w.one + 16 * block + 8);
    const V sameRe = V::loadAligned(w.other + 16 * block), sameIm = V::loadAligned(w.other + 16 * block + 8);
    return {a.re * re - a.im * im, a.im * sameRe + a.re * sameIm};
}
template <class V>
LANES_OP Complex<V> at(const float *block)
{
    return {V::loadAligned(block), V::loadAligned(block + 8)};
}

/// Outputs 0, 2, 4, 6 of an 8-point DFT, from the sums z[j] + z[j + 4]; oddOutputs computes outputs 1, 3, 5, 7
/// from the differences.
template <class V>
LANES_OP void evenOutputs(Complex<V> s0, Complex<V> s1, Complex<V> s2, Complex<V> s3, Complex<V> (&y)[4])
{
    const Complex<V> even = s0 + s2, turned = s0 - s2, odd = s1 + s3, oddTurned = s1 - s3;
    y[0] = even + odd;
    y[2] = even - odd;
    y[1] = minusTurned(turned, oddTurned);
    y[3] = plusTurned(turned, oddTurned);
}
template <class V>
LANES_OP void oddOutputs(Complex<V> d0, Complex<V> d1, Complex<V> d2, Complex<V> d3, Complex<V> (&y)[4])
{
    const V root = V::splat(0x1.6a09e6p-1f); // sqrt(1/2)
    const Complex<V> c1 = minusTurned(d1, d3), c3 = plusTurned(d1, d3);
    const Complex<V> b1 = minusTurned(d0, d2), b3 = plusTurned(d0, d2);
    const Complex<V> t1 = {(c1.re + c1.im) * root, (c1.im - c1.re) * root};
    const Complex<V> t3 = {(c3.im - c3.re) * root, (c3.re + c3.im) * root};
    y[0] = b1 + t1;
    y[2] = b1 - t1;
    y[1] = {b3.re + t3.re, b3.im - t3.im};
    y[3] = {b3.re - t3.re, b3.im + t3.im};
}

/// Destination of a pass: output k at `first + k x step`, its imaginary part `im` floats after that.
struct Target {
    float *first;
    ptrdiff_t step, im;
};
template <bool twiddled, class V>
LANES_OP void put(const Target &to, int k, Complex<V> z, Twiddles twiddles)
{
    if (twiddled && k) z = times(z, twiddles, k - 1);
    storeAligned(to.first + k * to.step, z.re);
    storeAligned(to.first + k * to.step + to.im, z.im);
}

/// Butterflies on all lanes of a register; inputs are `step` floats apart. Radix 8 reads its inputs twice, which
/// is faster than spilling sixteen sums and differences.
template <class V, bool twiddled>
LANES_OP void butterfly8(const float *x, ptrdiff_t step, const Target &to, Twiddles twiddles)
{
    Complex<V> y[4];
    evenOutputs(at<V>(x) + at<V>(x + 4 * step), at<V>(x + step) + at<V>(x + 5 * step),
                at<V>(x + 2 * step) + at<V>(x + 6 * step), at<V>(x + 3 * step) + at<V>(x + 7 * step), y);
    put<twiddled>(to, 0, y[0], twiddles);
    put<twiddled>(to, 2, y[1], twiddles);
    put<twiddled>(to, 4, y[2], twiddles);
    put<twiddled>(to, 6, y[3], twiddles);
    oddOutputs(at<V>(x) - at<V>(x + 4 * step), at<V>(x + step) - at<V>(x + 5 * step),
               at<V>(x + 2 * step) - at<V>(x + 6 * step), at<V>(x + 3 * step) - at<V>(x + 7 * step), y);
    put<twiddled>(to, 1, y[0], twiddles);
    put<twiddled>(to, 3, y[1], twiddles);
    put<twiddled>(to, 5, y[2], twiddles);
    put<twiddled>(to, 7, y[3], twiddles);
}
template <class V, bool twiddled>
LANES_OP void butterfly4(const float *x, ptrdiff_t step, const Target &to, Twiddles twiddles)
{
    const Complex<V> z0 = at<V>(x), z2 = at<V>(x + 2 * step), z1 = at<V>(x + step), z3 = at<V>(x + 3 * step);
    const Complex<V> s0 = z0 + z2, d0 = z0 - z2, s1 = z1 + z3, d1 = z1 - z3;
    put<twiddled>(to, 0, s0 + s1, twiddles);
    put<twiddled>(to, 1, minusTurned(d0, d1), twiddles);
    put<twiddled>(to, 2, s0 - s1, twiddles);
    put<twiddled>(to, 3, plusTurned(d0, d1), twiddles);
}

/// One group of a pass, for all offsets q.
template <class V, int radix, int stride, bool twiddled>
LANES_OP void runGroup(const float *x, ptrdiff_t step, float *y, const float *twiddles)
{
    for (int half = 0; half < 8; half += V::kLanes) {
        const Twiddles w = Twiddles::from(twiddles + half);
        for (int block = 0; block < 2 * stride; block += 16) {
            const Target to = {y + block + half, 2 * stride, 8};
            if constexpr (radix == 8)
                butterfly8<V, twiddled>(x + block + half, step, to, w);
            else
                butterfly4<V, twiddled>(x + block + half, step, to, w);
        }
    }
}
template <class V, int radix, int stride>
LANES_OP void runPass(const FftTables::Pass &pass, ptrdiff_t points, const float *x, float *y)
{
    const ptrdiff_t step = 2 * points / radix;
    const float *twiddles = pass.twiddles;
    runGroup<V, radix, stride, false>(x, step, y, twiddles);
    for (int p = 1; p < pass.groups; ++p, twiddles += 16 * (radix - 1)) {
        x += 2 * stride;
        y += 2 * stride * radix;
        runGroup<V, radix, stride, true>(x, step, y, twiddles);
    }
}

/// The last pass has one group. It writes separate arrays of real and imaginary parts, `im` floats apart.
template <class V, int radix>
LANES_OP void runLastPass(ptrdiff_t stride, const float *x, float *y, ptrdiff_t im)
{
    for (ptrdiff_t block = 0; block < stride; block += 8, x += 16, y += 8)
        for (int half = 0; half < 8; half += V::kLanes) {
            const Target to = {y + half, stride, im};
            if constexpr (radix == 8)
                butterfly8<V, false>(x + half, 2 * stride, to, {});
            else
                butterfly4<V, false>(x + half, 2 * stride, to, {});
        }
}

/// Reads even samples as real parts and odd samples as imaginary parts.
template <class V, bool windowed>
LANES_OP Complex<V> readSamples(const float *in, const float *window, ptrdiff_t at)
{
    V a = V::loadAligned(in + at), b = V::loadAligned(in + at + 8);
    if constexpr (windowed) {
        a = a * V::loadAligned(window + at);
        b = b * V::loadAligned(window + at + 8);
    }
    return {shuffle<0, 2, 0, 2>(a, b), shuffle<1, 3, 1, 3>(a, b)};
}

/// Stores lane l of all eight vectors contiguously, in the order of fftLaneOrder.
LANES_OP void storeRows(float *to, int half, F4 a, F4 b, F4 c, F4 d, F4 e, F4 f, F4 g, F4 h)
{
    to += 16 * fftLaneOrder(half);
    transpose(a, b, c, d);
    storeAligned(to, a);
    storeAligned(to + 16, b);
    storeAligned(to + 64, c);
    storeAligned(to + 80, d);
    transpose(e, f, g, h);
    storeAligned(to + 4, e);
    storeAligned(to + 20, f);
    storeAligned(to + 68, g);
    storeAligned(to + 84, h);
}
LANES_OP void storeRows(float *to, int, F8 a, F8 b, F8 c, F8 d, F8 e, F8 f, F8 g, F8 h)
{
    F8 rows[8] = {a, b, c, d, e, f, g, h};
    transpose(rows);
    storeAligned(to, rows[0]);
    storeAligned(to + 16, rows[1]);
    storeAligned(to + 64, rows[2]);
    storeAligned(to + 80, rows[3]);
    storeAligned(to + 32, rows[4]);
    storeAligned(to + 48, rows[5]);
    storeAligned(to + 96, rows[6]);
    storeAligned(to + 112, rows[7]);
}

/// The first pass, radix 8. Its lanes are neighbouring groups, so it transposes its output.
template <class V, bool windowed>
LANES_OP void runFirstPass(const FftTables &tables, const float *in, const float *window, float *y)
{
    const ptrdiff_t step = tables.points / 4;
    const float *twiddles = tables.firstTwiddles;
    for (ptrdiff_t group = 0; group < tables.points / 8; group += 8, y += 128, twiddles += 7 * 16)
        for (int half = 0; half < 8; half += V::kLanes) {
            const ptrdiff_t first = 2 * group + half;
            Complex<V> s[4], d[4], even[4], odd[4];
#pragma GCC unroll 4
            for (int j = 0; j < 4; ++j) {
                const auto a = readSamples<V, windowed>(in, window, first + j * step);
                const auto b = readSamples<V, windowed>(in, window, first + (j + 4) * step);
                s[j] = a + b;
                d[j] = a - b;
            }
            const Twiddles w = Twiddles::from(twiddles + half);
            evenOutputs(s[0], s[1], s[2], s[3], even);
            even[1] = times(even[1], w, 1);
            even[2] = times(even[2], w, 3);
            even[3] = times(even[3], w, 5);
            oddOutputs(d[0], d[1], d[2], d[3], odd);
            odd[0] = times(odd[0], w, 0);
            odd[1] = times(odd[1], w, 2);
            odd[2] = times(odd[2], w, 4);
            odd[3] = times(odd[3], w, 6);
            storeRows(y, half, even[0].re, odd[0].re, even[1].re, odd[1].re, even[2].re, odd[2].re,
                      even[3].re, odd[3].re);
            storeRows(y + 8, half, even[0].im, odd[0].im, even[1].im, odd[1].im, even[2].im, odd[2].im,
                      even[3].im, odd[3].im);
        }
}

} // namespace DSP::Kernels::SET
