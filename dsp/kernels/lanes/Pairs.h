#pragma once
/// Eight floats, eight int32 or four doubles as two halves, for variants with 16-byte registers.
/// The operations are defined in dsp/kernels/Lanes.h, the only file that includes this one.
// Unformatted: one operation per line.
// clang-format off
namespace DSP::Kernels::SET {

struct I8 {
    static constexpr int kLanes = 8;
    I4 lo, hi;
    LANES_OP I8 splat(int32_t x) { return {I4::splat(x), I4::splat(x)}; }
};
struct M8 {
    M4 lo, hi;
};
struct F8 {
    static constexpr int kLanes = 8;
    F4 lo, hi;
    LANES_OP F8 load(const float *from) { return {F4::load(from), F4::load(from + 4)}; }
    LANES_OP F8 loadAligned(const float *from) { return {F4::loadAligned(from), F4::loadAligned(from + 4)}; }
    LANES_OP F8 splat(float x) { return {F4::splat(x), F4::splat(x)}; }
};
struct MD4 {
    MD2 lo, hi;
};
struct D4 {
    static constexpr int kLanes = 4;
    D2 lo, hi;
    LANES_OP D4 loadAligned(const double *from) { return {D2::loadAligned(from), D2::loadAligned(from + 2)}; }
    LANES_OP D4 splat(double x) { return {D2::splat(x), D2::splat(x)}; }
    LANES_OP D4 of(double a, double b, double c, double d) { return {D2::of(a, b), D2::of(c, d)}; }
};

/// One full register of this variant.
using FloatRegister = F4;

LANES_OP F8 combine(F4 lo, F4 hi) { return {lo, hi}; }
LANES_OP F4 low(F8 a) { return a.lo; }
LANES_OP F4 high(F8 a) { return a.hi; }

LANES_OP void store(float *to, F8 a)
{
    store(to, a.lo);
    store(to + 4, a.hi);
}
LANES_OP void storeAligned(float *to, F8 a)
{
    storeAligned(to, a.lo);
    storeAligned(to + 4, a.hi);
}
LANES_OP void storeAligned(double *to, D4 a)
{
    storeAligned(to, a.lo);
    storeAligned(to + 2, a.hi);
}

LANES_OP I8 asInt(F8 a) { return {asInt(a.lo), asInt(a.hi)}; }
LANES_OP F8 asFloat(I8 a) { return {asFloat(a.lo), asFloat(a.hi)}; }

LANES_OP I8 operator-(I8 a, I8 b) { return {a.lo - b.lo, a.hi - b.hi}; }
LANES_OP I8 operator&(I8 a, I8 b) { return {a.lo & b.lo, a.hi & b.hi}; }
template <int bits> LANES_OP I8 shiftLeft(I8 a) { return {shiftLeft<bits>(a.lo), shiftLeft<bits>(a.hi)}; }

LANES_OP int bits(M8 a) { return bits(a.lo) | bits(a.hi) << 4; }
LANES_OP MD4 operator&(MD4 a, MD4 b) { return {a.lo & b.lo, a.hi & b.hi}; }
LANES_OP int bits(MD4 a) { return bits(a.lo) | bits(a.hi) << 2; }

LANES_OP F8 operator+(F8 a, F8 b) { return {a.lo + b.lo, a.hi + b.hi}; }
LANES_OP F8 operator-(F8 a, F8 b) { return {a.lo - b.lo, a.hi - b.hi}; }
LANES_OP F8 operator*(F8 a, F8 b) { return {a.lo * b.lo, a.hi * b.hi}; }
LANES_OP F8 operator/(F8 a, F8 b) { return {a.lo / b.lo, a.hi / b.hi}; }
LANES_OP F8 operator-(F8 a) { return {-a.lo, -a.hi}; }
LANES_OP F8 abs(F8 a) { return {abs(a.lo), abs(a.hi)}; }
LANES_OP F8 sqrt(F8 a) { return {sqrt(a.lo), sqrt(a.hi)}; }
LANES_OP F8 min(F8 a, F8 b) { return {min(a.lo, b.lo), min(a.hi, b.hi)}; }
LANES_OP F8 max(F8 a, F8 b) { return {max(a.lo, b.lo), max(a.hi, b.hi)}; }
LANES_OP M8 operator<(F8 a, F8 b) { return {a.lo < b.lo, a.hi < b.hi}; }
LANES_OP M8 operator<=(F8 a, F8 b) { return {a.lo <= b.lo, a.hi <= b.hi}; }
LANES_OP F8 select(M8 m, F8 a, F8 b) { return {select(m.lo, a.lo, b.lo), select(m.hi, a.hi, b.hi)}; }
LANES_OP F8 keep(M8 m, F8 a) { return {keep(m.lo, a.lo), keep(m.hi, a.hi)}; }

LANES_OP D4 operator+(D4 a, D4 b) { return {a.lo + b.lo, a.hi + b.hi}; }
LANES_OP D4 operator-(D4 a, D4 b) { return {a.lo - b.lo, a.hi - b.hi}; }
LANES_OP D4 operator*(D4 a, D4 b) { return {a.lo * b.lo, a.hi * b.hi}; }
LANES_OP D4 abs(D4 a) { return {abs(a.lo), abs(a.hi)}; }
LANES_OP MD4 operator<=(D4 a, D4 b) { return {a.lo <= b.lo, a.hi <= b.hi}; }

LANES_OP F8 toFloat(I8 a) { return {toFloat(a.lo), toFloat(a.hi)}; }
LANES_OP D4 toDouble(F4 a) { return {lowToDouble(a), highToDouble(a)}; }
LANES_OP F4 toFloat(D4 a) { return toFloat(a.lo, a.hi); }

template <int i, int j, int k, int l>
LANES_OP F8 shuffle(F8 a, F8 b) { return {shuffle<i, j, k, l>(a.lo, b.lo), shuffle<i, j, k, l>(a.hi, b.hi)}; }
LANES_OP F8 unpackLow(F8 a, F8 b) { return {unpackLow(a.lo, b.lo), unpackLow(a.hi, b.hi)}; }
LANES_OP F8 unpackHigh(F8 a, F8 b) { return {unpackHigh(a.lo, b.lo), unpackHigh(a.hi, b.hi)}; }
LANES_OP F8 lowHalves(F8 a, F8 b) { return {a.lo, b.lo}; }
LANES_OP F8 highHalves(F8 a, F8 b) { return {a.hi, b.hi}; }
LANES_OP D4 lowHalves(D4 a, D4 b) { return {a.lo, b.lo}; }
LANES_OP D4 highHalves(D4 a, D4 b) { return {a.hi, b.hi}; }
LANES_OP F8 reverse(F8 a) { return {shuffle<3, 2, 1, 0>(a.hi, a.hi), shuffle<3, 2, 1, 0>(a.lo, a.lo)}; }

} // namespace DSP::Kernels::SET
