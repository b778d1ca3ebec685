#include "dsp/operations/FourierTransform.h"

#include "dsp/kernels/Fft.h"

namespace DSP {

struct IppsFFTSpec_R_32f {
    FftPlan plan;
};

VectorStatus ippsFFTInitAlloc_R_32f(IppsFFTSpec_R_32f **spec, int order, int flag, int)
{
    if (!spec) return kVectorNullPointer;
    if (order < FftPlan::kLeastOrder || order > FftPlan::kMostOrder) return kVectorBadLength;
    if (flag != kFftScaleInverse && flag != kFftNoScale) return kVectorBadLength;
    *spec = new IppsFFTSpec_R_32f{FftPlan(order)};
    return kVectorOk;
}

VectorStatus ippsFFTGetBufSize_R_32f(const IppsFFTSpec_R_32f *spec, int *size)
{
    if (!spec || !size) return kVectorNullPointer;
    *size = static_cast<int>(spec->plan.workLength() * sizeof(float));
    return kVectorOk;
}

VectorStatus ippsFFTFwd_RToCCS_32f(const float *src, float *dst, const IppsFFTSpec_R_32f *spec,
                                   uint8_t *buffer)
{
    if (!src || !dst || !spec || !buffer) return kVectorNullPointer;
    spec->plan.forward(src, dst, reinterpret_cast<float *>(buffer));
    return kVectorOk;
}

VectorStatus ippsFFTFree_R_32f(IppsFFTSpec_R_32f *spec)
{
    if (!spec) return kVectorNullPointer;
    delete spec;
    return kVectorOk;
}

} // namespace DSP
