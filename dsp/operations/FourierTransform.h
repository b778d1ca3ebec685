#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// Vector-operation interface to FftPlan, the real-input FFT. Part of the interface; no stage uses it.
/// Shape   2^order samples, with order from FftPlan::kLeastOrder to kMostOrder. Arrays need no alignment; samples
///         and bins may share one array
/// Thread  InitAlloc and Free: allocate. The others: any, concurrently with a work buffer each
/// Errors  -8 for a null pointer, -6 for an unsupported order or flag; throws std::bad_alloc
namespace DSP {

struct IppsFFTSpec_R_32f;

/// `flag` is kFftScaleInverse or kFftNoScale; neither scales the forward transform. `hint` is ignored.
inline constexpr int kFftScaleInverse = 2, kFftNoScale = 8;
VectorStatus ippsFFTInitAlloc_R_32f(IppsFFTSpec_R_32f **spec, int order, int flag, int hint);

/// Returns the size of the work buffer in bytes.
VectorStatus ippsFFTGetBufSize_R_32f(const IppsFFTSpec_R_32f *spec, int *size);

/// Writes length + 2 floats: pairs (re, im) of bins 0 to length / 2. The first and last im are 0.
VectorStatus ippsFFTFwd_RToCCS_32f(const float *src, float *dst, const IppsFFTSpec_R_32f *spec,
                                   uint8_t *buffer);

VectorStatus ippsFFTFree_R_32f(IppsFFTSpec_R_32f *spec);

} // namespace DSP
