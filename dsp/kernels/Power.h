#pragma once
#include "dsp/kernels/Lanes.h"

/// base^exponent for the gain computers, inlined in the kernels of a set; V is F4 or F8.
/// Range   base: 2^-100 to FLT_MAX, infinity counts as 2^128, all else gives some finite value.
///         exponent: -1 to 1, beyond counts as the nearer end, NaN as -1; the result must lie below 2^102
/// Errors  at most 1.7 units in the last place of the float; at base 1 and exponent 0 exactly 1
/// Cost    38 operations for a register of lanes
/// Method  base = 2^e m, sqrt(1/2) <= m < sqrt(2); log2(m) is an odd polynomial in (m - 1) / (m + 1).
///         The exponent goes in two parts so short that their products with e are exact: only its product
///         with log2(m) is rounded, and that is below 0.51. The whole part of the sum becomes the exponent
///         field of the result, a polynomial gives 2^rest. Both polynomials are minimax fits, each
///         coefficient rounded before the next was fitted.
namespace DSP::Kernels::SET {

/// What depends on the exponent alone, to be made once for a block.
template <class V>
struct PowerExponent {
    V whole;     // the exponent
    V high, low; // its upper 16 bits and the rest, times 2^-23
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
    // Adding 1.5 x 2^23 rounds to a whole number, which then stands in the lowest bits; 127 + 25 is put on it
    // there so that a shift makes the exponent field, with 25 to spare for a result below the normal numbers.
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
