#pragma once

/// Four floats, four int32 and two doubles in the compiler's own vector types: no processor is named.
/// Meaning of the operations: dsp/kernels/Lanes.h, the only file that includes this one.
// One operation a line.
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
    LANES_OP I4 load(const int32_t *from) { return {readVector<Ints4>(from)}; }
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
    LANES_OP F4 loadPair(const float *from) { return {Floats4{from[0], from[1], 0.f, 0.f}}; }
    LANES_OP F4 splat(float x) { return {Floats4{x, x, x, x}}; }
    LANES_OP F4 of(float a, float b, float c, float d) { return {Floats4{a, b, c, d}}; }
};
struct MD2 {
    Ints2 v;
};
struct D2 {
    static constexpr int kLanes = 2;
    Doubles2 v;
    LANES_OP D2 load(const double *from) { return {readVector<Doubles2>(from)}; }
    LANES_OP D2 loadAligned(const double *from) { return {*reinterpret_cast<const Doubles2 *>(from)}; }
    LANES_OP D2 splat(double x) { return {Doubles2{x, x}}; }
    LANES_OP D2 of(double a, double b) { return {Doubles2{a, b}}; }
};

LANES_OP void store(int32_t *to, I4 a) { __builtin_memcpy(to, &a.v, sizeof a.v); }
LANES_OP void store(float *to, F4 a) { __builtin_memcpy(to, &a.v, sizeof a.v); }
LANES_OP void store(double *to, D2 a) { __builtin_memcpy(to, &a.v, sizeof a.v); }
LANES_OP void storeAligned(float *to, F4 a) { *reinterpret_cast<Floats4 *>(to) = a.v; }
LANES_OP void storeAligned(double *to, D2 a) { *reinterpret_cast<Doubles2 *>(to) = a.v; }
LANES_OP void storePair(float *to, F4 a)
{
    to[0] = a.v[0];
    to[1] = a.v[1];
}

LANES_OP I4 asInt(F4 a) { return {(Ints4)a.v}; }
LANES_OP F4 asFloat(I4 a) { return {(Floats4)a.v}; }

LANES_OP I4 operator+(I4 a, I4 b)
{
    typedef uint32_t Words __attribute__((vector_size(16)));
    return {(Ints4)((Words)a.v + (Words)b.v)};
}
LANES_OP I4 operator-(I4 a, I4 b)
{
    typedef uint32_t Words __attribute__((vector_size(16)));
    return {(Ints4)((Words)a.v - (Words)b.v)};
}
LANES_OP I4 operator&(I4 a, I4 b) { return {a.v & b.v}; }
LANES_OP I4 operator|(I4 a, I4 b) { return {a.v | b.v}; }
LANES_OP I4 operator^(I4 a, I4 b) { return {a.v ^ b.v}; }
template <int bits>
LANES_OP I4 shiftLeft(I4 a)
{
    typedef uint32_t Words __attribute__((vector_size(16)));
    return {(Ints4)((Words)a.v << bits)};
}
template <int bits> LANES_OP I4 shiftRight(I4 a) { return {a.v >> bits}; }
template <int bits>
LANES_OP I4 shiftRightLogical(I4 a)
{
    typedef uint32_t Words __attribute__((vector_size(16)));
    return {(Ints4)((Words)a.v >> bits)};
}
LANES_OP M4 operator==(I4 a, I4 b) { return {a.v == b.v}; }
LANES_OP M4 operator>(I4 a, I4 b) { return {a.v > b.v}; }

LANES_OP M4 operator&(M4 a, M4 b) { return {a.v & b.v}; }
LANES_OP M4 operator|(M4 a, M4 b) { return {a.v | b.v}; }
LANES_OP M4 andNot(M4 a, M4 b) { return {a.v & ~b.v}; }
LANES_OP int bits(M4 a) { return (a.v[0] & 1) | (a.v[1] & 2) | (a.v[2] & 4) | (a.v[3] & 8); }
LANES_OP MD2 operator&(MD2 a, MD2 b) { return {a.v & b.v}; }
LANES_OP MD2 operator|(MD2 a, MD2 b) { return {a.v | b.v}; }
LANES_OP MD2 andNot(MD2 a, MD2 b) { return {a.v & ~b.v}; }
LANES_OP int bits(MD2 a) { return int((a.v[0] & 1) | (a.v[1] & 2)); }

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
LANES_OP M4 operator==(F4 a, F4 b) { return {a.v == b.v}; }
LANES_OP F4 select(M4 m, F4 a, F4 b) { return asFloat({(m.v & asInt(a).v) | (~m.v & asInt(b).v)}); }
LANES_OP I4 select(M4 m, I4 a, I4 b) { return {(m.v & a.v) | (~m.v & b.v)}; }
LANES_OP F4 keep(M4 m, F4 a) { return asFloat({m.v & asInt(a).v}); }
LANES_OP F4 min(F4 a, F4 b) { return select(a < b, a, b); }
LANES_OP F4 max(F4 a, F4 b) { return select(b < a, a, b); }

LANES_OP D2 operator+(D2 a, D2 b) { return {a.v + b.v}; }
LANES_OP D2 operator-(D2 a, D2 b) { return {a.v - b.v}; }
LANES_OP D2 operator*(D2 a, D2 b) { return {a.v * b.v}; }
LANES_OP D2 operator/(D2 a, D2 b) { return {a.v / b.v}; }
LANES_OP D2 operator-(D2 a) { return {(Doubles2)((Ints2)a.v ^ Ints2{INT64_MIN, INT64_MIN})}; }
LANES_OP D2 abs(D2 a) { return {(Doubles2)((Ints2)a.v & Ints2{INT64_MAX, INT64_MAX})}; }
LANES_OP D2 sqrt(D2 a) { return D2::of(__builtin_sqrt(a.v[0]), __builtin_sqrt(a.v[1])); }
LANES_OP MD2 operator<(D2 a, D2 b) { return {a.v < b.v}; }
LANES_OP MD2 operator<=(D2 a, D2 b) { return {a.v <= b.v}; }
LANES_OP MD2 operator==(D2 a, D2 b) { return {a.v == b.v}; }
LANES_OP D2 select(MD2 m, D2 a, D2 b) { return {(Doubles2)((m.v & (Ints2)a.v) | (~m.v & (Ints2)b.v))}; }
LANES_OP D2 keep(MD2 m, D2 a) { return {(Doubles2)(m.v & (Ints2)a.v)}; }
LANES_OP D2 min(D2 a, D2 b) { return select(a < b, a, b); }
LANES_OP D2 max(D2 a, D2 b) { return select(b < a, a, b); }

/// From 2^23 on every float is an integer; below, adding and taking away 2^23 rounds it to one.
LANES_OP I4 toInt(F4 a)
{
    const F4 size = abs(a), step = F4::splat(0x1p23f);
    const F4 rounded = select(size < step, (size + step) - step, size);
    const M4 inside = (a < F4::splat(0x1p31f)) & (F4::splat(-0x1p31f) <= a);
    const F4 safe = keep(inside, select(a < F4::splat(0.f), -rounded, rounded));
    return select(inside, I4{__builtin_convertvector(safe.v, Ints4)}, I4::splat(INT32_MIN));
}
LANES_OP F4 toFloat(I4 a) { return {__builtin_convertvector(a.v, Floats4)}; }
LANES_OP D2 lowToDouble(F4 a) { return D2::of(a.v[0], a.v[1]); }
LANES_OP D2 highToDouble(F4 a) { return D2::of(a.v[2], a.v[3]); }
LANES_OP F4 toFloat(D2 a, D2 b) { return F4::of(float(a.v[0]), float(a.v[1]), float(b.v[0]), float(b.v[1])); }
LANES_OP F4 toFloat(D2 a) { return F4::of(float(a.v[0]), float(a.v[1]), 0.f, 0.f); }

template <int i, int j, int k, int l>
LANES_OP F4 shuffle(F4 a, F4 b) { return {__builtin_shufflevector(a.v, b.v, i, j, 4 + k, 4 + l)}; }
LANES_OP F4 unpackLow(F4 a, F4 b) { return {__builtin_shufflevector(a.v, b.v, 0, 4, 1, 5)}; }
LANES_OP F4 unpackHigh(F4 a, F4 b) { return {__builtin_shufflevector(a.v, b.v, 2, 6, 3, 7)}; }
template <int i, int j>
LANES_OP D2 shuffle(D2 a, D2 b) { return {__builtin_shufflevector(a.v, b.v, i, 2 + j)}; }
template <int i> LANES_OP float lane(F4 a) { return a.v[i]; }
template <int i> LANES_OP double lane(D2 a) { return a.v[i]; }
template <int i> LANES_OP int32_t lane(I4 a) { return a.v[i]; }

} // namespace DSP::Kernels::SET
