#pragma once
#include "dsp/kernels/Lanes.h"

/// base^exponent for the gain computers, inlined in the kernels; V is F4 or F8.
/// Range   base: 2^-100 to FLT_MAX; infinity counts as 2^128, any other base gives an unspecified finite value.
///         exponent: clamped to -1 ... 1, NaN counts as -1. The result must be below 2^102
/// Errors  at most 1.7 ulp; exactly 1 for base 1 or exponent 0
/// Cost    38 operations per register
/// Method  base = 2^e m with sqrt(1/2) <= m < sqrt(2); log2(m) is an odd polynomial in (m - 1) / (m + 1).
///         The exponent is split into two parts whose products with e are exact. Only its product with
///         log2(m), at most 0.51, is rounded. The integer part of the sum becomes the exponent field of the
///         result; a polynomial gives 2^fraction. Both polynomials are minimax fits, refitted after each
///         coefficient was rounded to a float.
namespace DSP::Kernels::SET {

/// Precomputed values of an exponent, for a whole block.
template <class V>
struct PowerExponent {
    V whole;     // the exponent
    V high, low; // its upper 16 mantissa bits and the remainder, times 2^-23
};

template <class V>
LANES_OP PowerExponent<V> powerExponent(V exponent)
{
    const V whole = min(max(exponent, V::splat(-1.0f)), V::splat(1.0f));
    const auto upperBits = decltype(asInt(whole))::splat(static_cast<int32_t>(0xFFFFFF00u));
    const V high = asFloat(asInt(whole) & upperBits), unit = V::splat(0x1p-23f);
    return {whole, high * unit, (whole - high) * unit};
}

template <class V>
LANES_OP V power(V base, const PowerExponent<V> &exponent)
{
    using I = decltype(asInt(base));
    const I bits = asInt(base);
    const I scale = (bits - I::splat(0x3F3504F3)) & I::splat(static_cast<int32_t>(0xFF800000u)); // e x 2^23
    const V m = asFloat(bits - scale), e = toFloat(scale);

    const V one = V::splat(1.0f);
    const V s = (m - one) / (m + one), square = s * s;
    V log = V::splat(0x1.c8edf4p-2f) * square + V::splat(0x1.26e74ap-1f);
    log = log * square + V::splat(0x1.ec7244p-1f);
    log = (log * square + V::splat(0x1.715476p+1f)) * s;

    const V exact = exponent.high * e;
    const V rest = exponent.low * e + exponent.whole * log;
    // Adding 1.5 x 2^23 rounds to an integer in the lowest bits. The offset of 127 + 25 makes these an exponent
    // field once shifted: 127 is the bias, and the 25, divided out at the end, allows denormal results.
    const V rounder = V::splat(0x1.8p23f + 127 + 25);
    const V shifted = (exact + rest) + rounder;
    const V f = (exact - (shifted - rounder)) + rest;

    V exp = V::splat(0x1.179c34p-13f) * f + V::splat(0x1.5ef4f6p-10f);
    exp = exp * f + V::splat(0x1.3b6816p-7f);
    exp = exp * f + V::splat(0x1.c6af9ep-5f);
    exp = exp * f + V::splat(0x1.ebfb94p-3f);
    exp = exp * f + V::splat(0x1.62e430p-1f);
    exp = exp * f + one;
    return exp * asFloat(shiftLeft<23>(asInt(shifted))) * V::splat(0x1p-25f);
}

} // namespace DSP::Kernels::SET
