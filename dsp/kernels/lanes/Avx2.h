#pragma once
/// Eight floats, eight int32 or four doubles in the 32-byte registers of AVX2; Sse2.h defines the halves.
/// The operations are defined in dsp/kernels/Lanes.h, the only file that includes this one.
// Unformatted: one operation per line.
// clang-format off
namespace DSP::Kernels::SET {

struct I8 {
    static constexpr int kLanes = 8;
    __m256i v;
    LANES_OP I8 splat(int32_t x) { return {_mm256_set1_epi32(x)}; }
};
struct M8 {
    __m256 v;
};
struct F8 {
    static constexpr int kLanes = 8;
    __m256 v;
    LANES_OP F8 load(const float *from) { return {_mm256_loadu_ps(from)}; }
    LANES_OP F8 loadAligned(const float *from) { return {_mm256_load_ps(from)}; }
    LANES_OP F8 splat(float x) { return {_mm256_set1_ps(x)}; }
};
struct MD4 {
    __m256d v;
};
struct D4 {
    static constexpr int kLanes = 4;
    __m256d v;
    LANES_OP D4 loadAligned(const double *from) { return {_mm256_load_pd(from)}; }
    LANES_OP D4 splat(double x) { return {_mm256_set1_pd(x)}; }
    LANES_OP D4 of(double a, double b, double c, double d) { return {_mm256_setr_pd(a, b, c, d)}; }
};

/// One full register of this variant.
using FloatRegister = F8;

LANES_OP F8 combine(F4 lo, F4 hi) { return {_mm256_insertf128_ps(_mm256_castps128_ps256(lo.v), hi.v, 1)}; }
LANES_OP F4 low(F8 a) { return {_mm256_castps256_ps128(a.v)}; }
LANES_OP F4 high(F8 a) { return {_mm256_extractf128_ps(a.v, 1)}; }

LANES_OP void store(float *to, F8 a) { _mm256_storeu_ps(to, a.v); }
LANES_OP void storeAligned(float *to, F8 a) { _mm256_store_ps(to, a.v); }
LANES_OP void storeAligned(double *to, D4 a) { _mm256_store_pd(to, a.v); }

LANES_OP I8 asInt(F8 a) { return {_mm256_castps_si256(a.v)}; }
LANES_OP F8 asFloat(I8 a) { return {_mm256_castsi256_ps(a.v)}; }

LANES_OP I8 operator-(I8 a, I8 b) { return {_mm256_sub_epi32(a.v, b.v)}; }
LANES_OP I8 operator&(I8 a, I8 b) { return {_mm256_and_si256(a.v, b.v)}; }
template <int bits> LANES_OP I8 shiftLeft(I8 a) { return {_mm256_slli_epi32(a.v, bits)}; }

LANES_OP int bits(M8 a) { return _mm256_movemask_ps(a.v); }
LANES_OP MD4 operator&(MD4 a, MD4 b) { return {_mm256_and_pd(a.v, b.v)}; }
LANES_OP int bits(MD4 a) { return _mm256_movemask_pd(a.v); }

LANES_OP F8 operator+(F8 a, F8 b) { return {_mm256_add_ps(a.v, b.v)}; }
LANES_OP F8 operator-(F8 a, F8 b) { return {_mm256_sub_ps(a.v, b.v)}; }
LANES_OP F8 operator*(F8 a, F8 b) { return {_mm256_mul_ps(a.v, b.v)}; }
LANES_OP F8 operator/(F8 a, F8 b) { return {_mm256_div_ps(a.v, b.v)}; }
LANES_OP F8 operator-(F8 a) { return {_mm256_xor_ps(a.v, _mm256_set1_ps(-0.0f))}; }
LANES_OP F8 abs(F8 a) { return {_mm256_andnot_ps(_mm256_set1_ps(-0.0f), a.v)}; }
LANES_OP F8 sqrt(F8 a) { return {_mm256_sqrt_ps(a.v)}; }
LANES_OP F8 min(F8 a, F8 b) { return {_mm256_min_ps(a.v, b.v)}; }
LANES_OP F8 max(F8 a, F8 b) { return {_mm256_max_ps(a.v, b.v)}; }
LANES_OP M8 operator<(F8 a, F8 b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_LT_OS)}; }
LANES_OP M8 operator<=(F8 a, F8 b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_LE_OS)}; }
LANES_OP F8 select(M8 m, F8 a, F8 b) { return {_mm256_blendv_ps(b.v, a.v, m.v)}; }
LANES_OP F8 keep(M8 m, F8 a) { return {_mm256_and_ps(m.v, a.v)}; }

LANES_OP D4 operator+(D4 a, D4 b) { return {_mm256_add_pd(a.v, b.v)}; }
LANES_OP D4 operator-(D4 a, D4 b) { return {_mm256_sub_pd(a.v, b.v)}; }
LANES_OP D4 operator*(D4 a, D4 b) { return {_mm256_mul_pd(a.v, b.v)}; }
LANES_OP D4 abs(D4 a) { return {_mm256_andnot_pd(_mm256_set1_pd(-0.), a.v)}; }
LANES_OP MD4 operator<=(D4 a, D4 b) { return {_mm256_cmp_pd(a.v, b.v, _CMP_LE_OS)}; }

LANES_OP F8 toFloat(I8 a) { return {_mm256_cvtepi32_ps(a.v)}; }
LANES_OP D4 toDouble(F4 a) { return {_mm256_cvtps_pd(a.v)}; }
LANES_OP F4 toFloat(D4 a) { return {_mm256_cvtpd_ps(a.v)}; }

template <int i, int j, int k, int l>
LANES_OP F8 shuffle(F8 a, F8 b) { return {_mm256_shuffle_ps(a.v, b.v, _MM_SHUFFLE(l, k, j, i))}; }
LANES_OP F8 unpackLow(F8 a, F8 b) { return {_mm256_unpacklo_ps(a.v, b.v)}; }
LANES_OP F8 unpackHigh(F8 a, F8 b) { return {_mm256_unpackhi_ps(a.v, b.v)}; }
LANES_OP F8 lowHalves(F8 a, F8 b) { return {_mm256_permute2f128_ps(a.v, b.v, 0x20)}; }
LANES_OP F8 highHalves(F8 a, F8 b) { return {_mm256_permute2f128_ps(a.v, b.v, 0x31)}; }
LANES_OP D4 lowHalves(D4 a, D4 b) { return {_mm256_permute2f128_pd(a.v, b.v, 0x20)}; }
LANES_OP D4 highHalves(D4 a, D4 b) { return {_mm256_permute2f128_pd(a.v, b.v, 0x31)}; }
LANES_OP F8 reverse(F8 a)
{
    return {_mm256_permutevar8x32_ps(a.v, _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0))};
}

} // namespace DSP::Kernels::SET
