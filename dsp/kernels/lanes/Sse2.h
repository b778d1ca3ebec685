#pragma once
#ifdef __AVX2__
#include <immintrin.h>
#else
#include <emmintrin.h>
#endif

/// Four floats, four int32 or two doubles in 16-byte SSE registers; the AVX2 variant includes it too.
/// The operations are defined in dsp/kernels/Lanes.h, the only file that includes this one.
// Unformatted: one operation per line.
// clang-format off
namespace DSP::Kernels::SET {

struct I4 {
    static constexpr int kLanes = 4;
    __m128i v;
    LANES_OP I4 splat(int32_t x) { return {_mm_set1_epi32(x)}; }
};
struct M4 {
    __m128 v;
};
struct F4 {
    static constexpr int kLanes = 4;
    __m128 v;
    LANES_OP F4 load(const float *from) { return {_mm_loadu_ps(from)}; }
    LANES_OP F4 loadAligned(const float *from) { return {_mm_load_ps(from)}; }
    LANES_OP F4 splat(float x) { return {_mm_set1_ps(x)}; }
    LANES_OP F4 of(float a, float b, float c, float d) { return {_mm_setr_ps(a, b, c, d)}; }
};
struct MD2 {
    __m128d v;
};
struct D2 {
    static constexpr int kLanes = 2;
    __m128d v;
    LANES_OP D2 loadAligned(const double *from) { return {_mm_load_pd(from)}; }
    LANES_OP D2 splat(double x) { return {_mm_set1_pd(x)}; }
    LANES_OP D2 of(double a, double b) { return {_mm_setr_pd(a, b)}; }
};

LANES_OP void store(float *to, F4 a) { _mm_storeu_ps(to, a.v); }
LANES_OP void storeAligned(float *to, F4 a) { _mm_store_ps(to, a.v); }
LANES_OP void storeAligned(double *to, D2 a) { _mm_store_pd(to, a.v); }

LANES_OP I4 asInt(F4 a) { return {_mm_castps_si128(a.v)}; }
LANES_OP F4 asFloat(I4 a) { return {_mm_castsi128_ps(a.v)}; }

LANES_OP I4 operator-(I4 a, I4 b) { return {_mm_sub_epi32(a.v, b.v)}; }
LANES_OP I4 operator&(I4 a, I4 b) { return {_mm_and_si128(a.v, b.v)}; }
LANES_OP I4 operator^(I4 a, I4 b) { return {_mm_xor_si128(a.v, b.v)}; }
template <int bits> LANES_OP I4 shiftLeft(I4 a) { return {_mm_slli_epi32(a.v, bits)}; }

LANES_OP int bits(M4 a) { return _mm_movemask_ps(a.v); }
LANES_OP MD2 operator&(MD2 a, MD2 b) { return {_mm_and_pd(a.v, b.v)}; }
LANES_OP int bits(MD2 a) { return _mm_movemask_pd(a.v); }

LANES_OP F4 operator+(F4 a, F4 b) { return {_mm_add_ps(a.v, b.v)}; }
LANES_OP F4 operator-(F4 a, F4 b) { return {_mm_sub_ps(a.v, b.v)}; }
LANES_OP F4 operator*(F4 a, F4 b) { return {_mm_mul_ps(a.v, b.v)}; }
LANES_OP F4 operator/(F4 a, F4 b) { return {_mm_div_ps(a.v, b.v)}; }
LANES_OP F4 operator-(F4 a) { return {_mm_xor_ps(a.v, _mm_set1_ps(-0.0f))}; }
LANES_OP F4 abs(F4 a) { return {_mm_andnot_ps(_mm_set1_ps(-0.0f), a.v)}; }
LANES_OP F4 sqrt(F4 a) { return {_mm_sqrt_ps(a.v)}; }
LANES_OP F4 min(F4 a, F4 b) { return {_mm_min_ps(a.v, b.v)}; }
LANES_OP F4 max(F4 a, F4 b) { return {_mm_max_ps(a.v, b.v)}; }
LANES_OP M4 operator<(F4 a, F4 b) { return {_mm_cmplt_ps(a.v, b.v)}; }
LANES_OP M4 operator<=(F4 a, F4 b) { return {_mm_cmple_ps(a.v, b.v)}; }
LANES_OP F4 keep(M4 m, F4 a) { return {_mm_and_ps(m.v, a.v)}; }

LANES_OP D2 operator+(D2 a, D2 b) { return {_mm_add_pd(a.v, b.v)}; }
LANES_OP D2 operator-(D2 a, D2 b) { return {_mm_sub_pd(a.v, b.v)}; }
LANES_OP D2 operator*(D2 a, D2 b) { return {_mm_mul_pd(a.v, b.v)}; }
LANES_OP D2 abs(D2 a) { return {_mm_andnot_pd(_mm_set1_pd(-0.), a.v)}; }
LANES_OP MD2 operator<=(D2 a, D2 b) { return {_mm_cmple_pd(a.v, b.v)}; }

#ifdef __AVX2__
LANES_OP F4 select(M4 m, F4 a, F4 b) { return {_mm_blendv_ps(b.v, a.v, m.v)}; }
#else
LANES_OP F4 select(M4 m, F4 a, F4 b) { return {_mm_or_ps(_mm_and_ps(m.v, a.v), _mm_andnot_ps(m.v, b.v))}; }
#endif

LANES_OP F4 toFloat(I4 a) { return {_mm_cvtepi32_ps(a.v)}; }
LANES_OP D2 lowToDouble(F4 a) { return {_mm_cvtps_pd(a.v)}; }
LANES_OP D2 highToDouble(F4 a) { return {_mm_cvtps_pd(_mm_movehl_ps(a.v, a.v))}; }
LANES_OP F4 toFloat(D2 a, D2 b) { return {_mm_movelh_ps(_mm_cvtpd_ps(a.v), _mm_cvtpd_ps(b.v))}; }

template <int i, int j, int k, int l>
LANES_OP F4 shuffle(F4 a, F4 b) { return {_mm_shuffle_ps(a.v, b.v, _MM_SHUFFLE(l, k, j, i))}; }
LANES_OP F4 unpackLow(F4 a, F4 b) { return {_mm_unpacklo_ps(a.v, b.v)}; }
LANES_OP F4 unpackHigh(F4 a, F4 b) { return {_mm_unpackhi_ps(a.v, b.v)}; }
template <int i> LANES_OP float lane(F4 a) { return _mm_cvtss_f32(shuffle<i, i, i, i>(a, a).v); }

} // namespace DSP::Kernels::SET
