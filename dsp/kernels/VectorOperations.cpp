#include "dsp/kernels/VectorOperations.h"

#include <algorithm>

namespace DSP {

void scaleSamples(float factor, float *samples, uint32_t count)
{
    if (factor == 0.0f)
        clearSamples(samples, count);
    else if (factor != 1.0f)
        Kernels::active().block.scale(factor, samples, count);
}

void clearSamples(float *samples, uint32_t count) { std::fill_n(samples, count, 0.0f); }

VectorStatus ippsAdd_32f_I(const float *src, float *srcDst, int len)
{
    const VectorStatus status = checkVectors(len, src, srcDst);
    if (status == kVectorOk) addSamples(src, srcDst, static_cast<uint32_t>(len));
    return status;
}

VectorStatus ippsMul_32f_I(const float *src, float *srcDst, int len)
{
    const VectorStatus status = checkVectors(len, src, srcDst);
    if (status == kVectorOk) multiplySamples(src, srcDst, static_cast<uint32_t>(len));
    return status;
}

VectorStatus ippsMulC_32f_I(float value, float *srcDst, int len)
{
    const VectorStatus status = checkVectors(len, srcDst);
    if (status == kVectorOk) scaleSamples(value, srcDst, static_cast<uint32_t>(len));
    return status;
}

VectorStatus ippsCopy_32f(const float *src, float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, src, dst);
    if (status == kVectorOk) copySamples(src, dst, static_cast<uint32_t>(len));
    return status;
}

VectorStatus ippsZero_32f(float *dst, int len)
{
    if (len == 0) return kVectorOk;
    const VectorStatus status = checkVectors(len, dst);
    if (status == kVectorOk) clearSamples(dst, static_cast<uint32_t>(len));
    return status;
}

} // namespace DSP
