#pragma once
/// Operations composed of the variant's own, with the same source in every instruction-set variant.
/// They are defined in dsp/kernels/Lanes.h, the only file that includes this one.
// Unformatted: one operation per line.
// clang-format off
namespace DSP::Kernels::SET {

LANES_OP M4 operator>(F4 a, F4 b) { return b < a; }
LANES_OP M4 operator>=(F4 a, F4 b) { return b <= a; }
LANES_OP M8 operator>=(F8 a, F8 b) { return b <= a; }

LANES_OP bool any(M4 a) { return bits(a) != 0; }
LANES_OP bool any(M8 a) { return bits(a) != 0; }
LANES_OP bool all(M8 a) { return bits(a) == 0xFF; }
LANES_OP bool all(MD4 a) { return bits(a) == 0xF; }

/// shuffle<i, j, k, l>(a) takes lanes i, j, k and l of a; with two arguments, k and l are lanes of the second.
/// On F8, shuffle, unpackLow and unpackHigh treat each half of four lanes separately.
template <int i, int j, int k, int l> LANES_OP F4 shuffle(F4 a) { return shuffle<i, j, k, l>(a, a); }
LANES_OP F4 reverse(F4 a) { return shuffle<3, 2, 1, 0>(a); }

/// Reduces by halves: lanes 0-3 with 4-7, then 0-1 with 2-3, then 0 with 1.
LANES_OP float horizontalMax(F4 a)
{
    const F4 two = max(a, shuffle<2, 3, 2, 3>(a));
    return lane<0>(max(two, shuffle<1, 1, 1, 1>(two)));
}
LANES_OP float horizontalMin(F4 a)
{
    const F4 two = min(a, shuffle<2, 3, 2, 3>(a));
    return lane<0>(min(two, shuffle<1, 1, 1, 1>(two)));
}
LANES_OP float horizontalMax(F8 a) { return horizontalMax(max(low(a), high(a))); }
LANES_OP float horizontalMin(F8 a) { return horizontalMin(min(low(a), high(a))); }

/// Lane j of row i moves to lane i of row j.
LANES_OP void transpose(F4 &r0, F4 &r1, F4 &r2, F4 &r3)
{
    const F4 a = unpackLow(r0, r1), b = unpackLow(r2, r3);
    const F4 c = unpackHigh(r0, r1), d = unpackHigh(r2, r3);
    r0 = shuffle<0, 1, 0, 1>(a, b);
    r1 = shuffle<2, 3, 2, 3>(a, b);
    r2 = shuffle<0, 1, 0, 1>(c, d);
    r3 = shuffle<2, 3, 2, 3>(c, d);
}

/// Transposes each 4 x 4 half: lane j of row i moves to lane i of row j, and lane 4 + j to lane 4 + i.
LANES_OP void transposeHalves(F8 &r0, F8 &r1, F8 &r2, F8 &r3)
{
    const F8 a = unpackLow(r0, r1), b = unpackLow(r2, r3);
    const F8 c = unpackHigh(r0, r1), d = unpackHigh(r2, r3);
    r0 = shuffle<0, 1, 0, 1>(a, b);
    r1 = shuffle<2, 3, 2, 3>(a, b);
    r2 = shuffle<0, 1, 0, 1>(c, d);
    r3 = shuffle<2, 3, 2, 3>(c, d);
}

LANES_OP void joinHalves(F8 &a, F8 &b)
{
    const F8 upper = a;
    a = lowHalves(upper, b);
    b = highHalves(upper, b);
}
LANES_OP void transpose(F8 (&rows)[8])
{
    transposeHalves(rows[0], rows[1], rows[2], rows[3]);
    transposeHalves(rows[4], rows[5], rows[6], rows[7]);
    joinHalves(rows[0], rows[4]);
    joinHalves(rows[1], rows[5]);
    joinHalves(rows[2], rows[6]);
    joinHalves(rows[3], rows[7]);
}

/// Stores a0 b0 a1 b1 ...
LANES_OP void storeInterleaved(float *to, F4 a, F4 b)
{
    store(to, unpackLow(a, b));
    store(to + 4, unpackHigh(a, b));
}
LANES_OP void storeInterleaved(float *to, F8 a, F8 b)
{
    const F8 outer = unpackLow(a, b), inner = unpackHigh(a, b);
    store(to, lowHalves(outer, inner));
    store(to + 8, highHalves(outer, inner));
}

} // namespace DSP::Kernels::SET
