#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// The real Fourier transform among the vector operations, over an FftPlan. Part of the interface; no stage uses
/// it.
/// Shape   2^order samples, order FftPlan::kLeastOrder to kMostOrder. Arrays may have any address; samples and bins
///         may be the same array
/// Thread  InitAlloc and Free: allocate. The others: any, several at once with a work buffer each
/// Errors  -8 for a null pointer, -6 for another order or a scaled transform; std::bad_alloc
namespace DSP {

struct IppsFFTSpec_R_32f;

/// `flag` is kFftScaleInverse or kFftNoScale: neither scales the forward transform. `hint` is ignored.
inline constexpr int kFftScaleInverse = 2, kFftNoScale = 8;
VectorStatus ippsFFTInitAlloc_R_32f(IppsFFTSpec_R_32f **spec, int order, int flag, int hint);

/// Bytes of the work buffer.
VectorStatus ippsFFTGetBufSize_R_32f(const IppsFFTSpec_R_32f *spec, int *size);

/// Pairs (re, im) of bins 0 to length / 2: length + 2 floats, the first and last im being 0.
VectorStatus ippsFFTFwd_RToCCS_32f(const float *src, float *dst, const IppsFFTSpec_R_32f *spec,
                                   uint8_t *buffer);

VectorStatus ippsFFTFree_R_32f(IppsFFTSpec_R_32f *spec);

} // namespace DSP
