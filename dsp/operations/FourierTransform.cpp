#include "dsp/operations/FourierTransform.h"

#include <cstring>

#include "dsp/kernels/Fft.h"

namespace DSP {

struct IppsFFTSpec_R_32f {
    FftPlan plan;
};

namespace {

constexpr size_t kAlignment = Util::AlignedBuffer<float>::kAlignment;

/// Rounds an array's length up so that an array after it is aligned.
size_t alignedCount(size_t count)
{
    constexpr size_t kFloats = kAlignment / sizeof(float);
    return (count + kFloats - 1) / kFloats * kFloats;
}

} // namespace

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
    const auto length = static_cast<size_t>(spec->plan.length());
    const size_t floats = length + alignedCount(length + 2) + spec->plan.workLength();
    *size = static_cast<int>(floats * sizeof(float) + kAlignment);
    return kVectorOk;
}

VectorStatus ippsFFTFwd_RToCCS_32f(const float *src, float *dst, const IppsFFTSpec_R_32f *spec,
                                   uint8_t *buffer)
{
    if (!src || !dst || !spec || !buffer) return kVectorNullPointer;
    const auto length = static_cast<size_t>(spec->plan.length());
    const size_t misalignment = reinterpret_cast<uintptr_t>(buffer) % kAlignment;
    auto *const in = reinterpret_cast<float *>(buffer + (kAlignment - misalignment) % kAlignment);
    float *const out = in + length, *const work = out + alignedCount(length + 2);
    std::memcpy(in, src, length * sizeof(float));
    spec->plan.forward(in, out, work);
    std::memcpy(dst, out, (length + 2) * sizeof(float));
    return kVectorOk;
}

VectorStatus ippsFFTFree_R_32f(IppsFFTSpec_R_32f *spec)
{
    if (!spec) return kVectorNullPointer;
    delete spec;
    return kVectorOk;
}

} // namespace DSP
