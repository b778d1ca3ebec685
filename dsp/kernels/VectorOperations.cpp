#include "dsp/kernels/VectorOperations.h"

#include <algorithm>
#include <cfloat>
#include <cstring>

#include "dsp/kernels/Kernels.h"

namespace DSP {

VectorStatus ippsAdd_32f_I(const float *src, float *srcDst, int len)
{
    const VectorStatus status = checkVectors(len, src, srcDst);
    if (status != kVectorOk) return status;
    Kernels::active().block.add(src, srcDst, len);
    return kVectorOk;
}

VectorStatus ippsMulC_32f_I(float value, float *srcDst, int len)
{
    const VectorStatus status = checkVectors(len, srcDst);
    if (status != kVectorOk || value == 1.0f) return status;
    if (value == 0.0f) return ippsZero_32f(srcDst, len);
    Kernels::active().block.scale(value, srcDst, len);
    return kVectorOk;
}

VectorStatus ippsMul_32f_I(const float *src, float *srcDst, int len)
{
    const VectorStatus status = checkVectors(len, src, srcDst);
    if (status != kVectorOk) return status;
    Kernels::active().block.multiply(src, srcDst, len);
    return kVectorOk;
}

VectorStatus ippsThreshold_GT_32f_I(float *srcDst, int len, float level)
{
    const VectorStatus status = checkVectors(len, srcDst);
    if (status != kVectorOk) return status;
    for (int i = 0; i < len; ++i) srcDst[i] = srcDst[i] > level ? level : srcDst[i];
    return kVectorOk;
}

VectorStatus ippsDotProd_32f(const float *a, const float *b, int len, float *result)
{
    if (result != nullptr) *result = 0.0f;
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
    if (status != kVectorOk) return status;
    for (int i = 0; i < len; ++i) dst[i] = src[i];
    return kVectorOk;
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
    if (status != kVectorOk) return status;
    std::memmove(dst, src, static_cast<size_t>(len));
    return kVectorOk;
}

VectorStatus ippsCopy_32f(const float *src, float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, src, dst);
    if (status != kVectorOk) return status;
    Kernels::active().block.copy(src, dst, len);
    return kVectorOk;
}

VectorStatus ippsMove_32f(const float *src, float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, src, dst);
    if (status != kVectorOk) return status;
    std::memmove(dst, src, static_cast<size_t>(len) * sizeof(float));
    return kVectorOk;
}

VectorStatus ippsSet_32f(float value, float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, dst);
    if (status != kVectorOk) return status;
    std::fill_n(dst, len, value);
    return kVectorOk;
}

VectorStatus ippsZero_32f(float *dst, int len) { return ippsSet_32f(0.0f, dst, len); }

} // namespace DSP
