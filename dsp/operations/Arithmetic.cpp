#include "dsp/operations/Arithmetic.h"

#include <algorithm>
#include <cfloat>
#include <cstring>

namespace DSP {

VectorStatus ippsThreshold_GT_32f_I(float *srcDst, int len, float level)
{
    const VectorStatus status = checkVectors(len, srcDst);
    if (status != kVectorOk) return status;
    for (int i = 0; i < len; ++i) srcDst[i] = srcDst[i] > level ? level : srcDst[i];
    return kVectorOk;
}

VectorStatus ippsDotProd_32f(const float *a, const float *b, int len, float *result)
{
    if (result) *result = 0.0f;
    const VectorStatus status = checkVectors(len, a, b, result);
    if (status != kVectorOk) return status;

    float sums[4] = {};
    int i = 0;
    for (; i + 4 <= len; i += 4)
        for (int lane = 0; lane < 4; ++lane) sums[lane] += a[i + lane] * b[i + lane];
    for (int lane = 0; i < len; ++i, ++lane) sums[lane] += a[i] * b[i];
    *result = (sums[0] + sums[2]) + (sums[1] + sums[3]);
    return kVectorOk;
}

VectorStatus ippsConvert_32f64f(const float *src, double *dst, int len)
{
    const VectorStatus status = checkVectors(len, src, dst);
    if (status == kVectorOk) std::copy_n(src, len, dst);
    return status;
}

VectorStatus ippsConvert_64f32f(const double *src, float *dst, int len)
{
    const VectorStatus status = checkVectors(len, src, dst);
    if (status != kVectorOk) return status;
    constexpr double kLargest = FLT_MAX;
    for (int i = 0; i < len; ++i) {
        const double below = src[i] > kLargest ? kLargest : src[i];
        dst[i] = static_cast<float>(below < -kLargest ? -kLargest : below);
    }
    return kVectorOk;
}

VectorStatus ippsCopy_8u(const uint8_t *src, uint8_t *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, src, dst);
    if (status == kVectorOk) std::memmove(dst, src, static_cast<size_t>(len));
    return status;
}

VectorStatus ippsMove_32f(const float *src, float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, src, dst);
    if (status == kVectorOk) std::memmove(dst, src, static_cast<size_t>(len) * sizeof(float));
    return status;
}

VectorStatus ippsSet_32f(float value, float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, dst);
    if (status == kVectorOk) std::fill_n(dst, len, value);
    return status;
}

} // namespace DSP
