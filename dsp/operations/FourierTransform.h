#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// The real Fourier transform among the vector operations, over an FftPlan. Part of the interface; no stage uses
/// it.
/// Shape   samples, bins and work buffer start at a multiple of 32 bytes and are three different arrays
/// Thread  InitAlloc and Free allocate; the rest any, several at once with a work buffer each
/// Errors  a null pointer gives -8, an order that FftPlan does not take or a scaled transform -6. Memory that
///         is out throws std::bad_alloc
namespace DSP {

struct IppsFFTSpec_R_32f;

/// `flag` says where the scale 1 / length goes; a forward transform without it is what there is:
/// kFftScaleInverse or kFftNoScale. `hint` weighed speed against accuracy and is not looked at.
inline constexpr int kFftScaleInverse = 2, kFftNoScale = 8;
VectorStatus ippsFFTInitAlloc_R_32f(IppsFFTSpec_R_32f **spec, int order, int flag, int hint);

/// Bytes of the work buffer.
VectorStatus ippsFFTGetBufSize_R_32f(const IppsFFTSpec_R_32f *spec, int *size);

/// Pairs (re, im) of bins 0 to length / 2: length + 2 floats, the first and last im being 0.
VectorStatus ippsFFTFwd_RToCCS_32f(const float *src, float *dst, const IppsFFTSpec_R_32f *spec,
                                   uint8_t *buffer);

VectorStatus ippsFFTFree_R_32f(IppsFFTSpec_R_32f *spec);

} // namespace DSP
