#pragma once
/// Four floats, four int32 or two doubles in GCC vector types, without processor-specific intrinsics.
/// The operations are defined in dsp/kernels/Lanes.h, the only file that includes this one.
// Unformatted: one operation per line.
// clang-format off
namespace DSP::Kernels::SET {

typedef float Floats4 __attribute__((vector_size(16)));
typedef double Doubles2 __attribute__((vector_size(16)));
typedef int32_t Ints4 __attribute__((vector_size(16)));
typedef int64_t Ints2 __attribute__((vector_size(16)));

template <class V>
LANES_OP V readVector(const void *from)
{
    V v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

struct I4 {
    static constexpr int kLanes = 4;
    Ints4 v;
    LANES_OP I4 splat(int32_t x) { return {Ints4{x, x, x, x}}; }
};
struct M4 {
    Ints4 v;
};
struct F4 {
    static constexpr int kLanes = 4;
    Floats4 v;
    LANES_OP F4 load(const float *from) { return {readVector<Floats4>(from)}; }
    LANES_OP F4 loadAligned(const float *from) { return {*reinterpret_cast<const Floats4 *>(from)}; }
    LANES_OP F4 splat(float x) { return {Floats4{x, x, x, x}}; }
    LANES_OP F4 of(float a, float b, float c, float d) { return {Floats4{a, b, c, d}}; }
};
struct MD2 {
    Ints2 v;
};
struct D2 {
    static constexpr int kLanes = 2;
    Doubles2 v;
    LANES_OP D2 loadAligned(const double *from) { return {*reinterpret_cast<const Doubles2 *>(from)}; }
    LANES_OP D2 splat(double x) { return {Doubles2{x, x}}; }
    LANES_OP D2 of(double a, double b) { return {Doubles2{a, b}}; }
};

LANES_OP void store(float *to, F4 a) { __builtin_memcpy(to, &a.v, sizeof a.v); }
LANES_OP void storeAligned(float *to, F4 a) { *reinterpret_cast<Floats4 *>(to) = a.v; }
LANES_OP void storeAligned(double *to, D2 a) { *reinterpret_cast<Doubles2 *>(to) = a.v; }

LANES_OP I4 asInt(F4 a) { return {(Ints4)a.v}; }
LANES_OP F4 asFloat(I4 a) { return {(Floats4)a.v}; }

LANES_OP I4 operator-(I4 a, I4 b)
{
    typedef uint32_t Words __attribute__((vector_size(16)));
    return {(Ints4)((Words)a.v - (Words)b.v)};
}
LANES_OP I4 operator&(I4 a, I4 b) { return {a.v & b.v}; }
LANES_OP I4 operator^(I4 a, I4 b) { return {a.v ^ b.v}; }
template <int bits>
LANES_OP I4 shiftLeft(I4 a)
{
    typedef uint32_t Words __attribute__((vector_size(16)));
    return {(Ints4)((Words)a.v << bits)};
}

LANES_OP int bits(M4 a) { return (a.v[0] & 1) | (a.v[1] & 2) | (a.v[2] & 4) | (a.v[3] & 8); }
LANES_OP MD2 operator&(MD2 a, MD2 b) { return {a.v & b.v}; }
LANES_OP int bits(MD2 a) { return static_cast<int>((a.v[0] & 1) | (a.v[1] & 2)); }

LANES_OP F4 operator+(F4 a, F4 b) { return {a.v + b.v}; }
LANES_OP F4 operator-(F4 a, F4 b) { return {a.v - b.v}; }
LANES_OP F4 operator*(F4 a, F4 b) { return {a.v * b.v}; }
LANES_OP F4 operator/(F4 a, F4 b) { return {a.v / b.v}; }
LANES_OP F4 operator-(F4 a) { return asFloat(asInt(a) ^ I4::splat(INT32_MIN)); }
LANES_OP F4 abs(F4 a) { return asFloat(asInt(a) & I4::splat(INT32_MAX)); }
LANES_OP F4 sqrt(F4 a)
{
    return F4::of(__builtin_sqrtf(a.v[0]), __builtin_sqrtf(a.v[1]), __builtin_sqrtf(a.v[2]),
                  __builtin_sqrtf(a.v[3]));
}
LANES_OP M4 operator<(F4 a, F4 b) { return {a.v < b.v}; }
LANES_OP M4 operator<=(F4 a, F4 b) { return {a.v <= b.v}; }
LANES_OP F4 select(M4 m, F4 a, F4 b) { return asFloat({(m.v & asInt(a).v) | (~m.v & asInt(b).v)}); }
LANES_OP F4 keep(M4 m, F4 a) { return asFloat({m.v & asInt(a).v}); }
LANES_OP F4 min(F4 a, F4 b) { return select(a < b, a, b); }
LANES_OP F4 max(F4 a, F4 b) { return select(b < a, a, b); }

LANES_OP D2 operator+(D2 a, D2 b) { return {a.v + b.v}; }
LANES_OP D2 operator-(D2 a, D2 b) { return {a.v - b.v}; }
LANES_OP D2 operator*(D2 a, D2 b) { return {a.v * b.v}; }
LANES_OP D2 abs(D2 a) { return {(Doubles2)((Ints2)a.v & Ints2{INT64_MAX, INT64_MAX})}; }
LANES_OP MD2 operator<=(D2 a, D2 b) { return {a.v <= b.v}; }

LANES_OP F4 toFloat(I4 a) { return {__builtin_convertvector(a.v, Floats4)}; }
LANES_OP D2 lowToDouble(F4 a) { return D2::of(a.v[0], a.v[1]); }
LANES_OP D2 highToDouble(F4 a) { return D2::of(a.v[2], a.v[3]); }
LANES_OP F4 toFloat(D2 a, D2 b)
{
    return F4::of(static_cast<float>(a.v[0]), static_cast<float>(a.v[1]), static_cast<float>(b.v[0]),
                  static_cast<float>(b.v[1]));
}

template <int i, int j, int k, int l>
LANES_OP F4 shuffle(F4 a, F4 b) { return {__builtin_shufflevector(a.v, b.v, i, j, 4 + k, 4 + l)}; }
LANES_OP F4 unpackLow(F4 a, F4 b) { return {__builtin_shufflevector(a.v, b.v, 0, 4, 1, 5)}; }
LANES_OP F4 unpackHigh(F4 a, F4 b) { return {__builtin_shufflevector(a.v, b.v, 2, 6, 3, 7)}; }
template <int i> LANES_OP float lane(F4 a) { return a.v[i]; }

} // namespace DSP::Kernels::SET
