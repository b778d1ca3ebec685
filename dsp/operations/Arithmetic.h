#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// Vector operations beside those of dsp/kernels/VectorOperations.h. Part of the interface; no stage uses them.
/// Shape   `len` elements; arrays of one call are the same or do not overlap, but for ippsMove_32f
/// Thread  any; no state, no allocation
/// Errors  a null pointer gives -8, a length below 1 gives -6, and nothing is changed. Copies and fills take a
///         length of 0 as done, whatever the pointers
namespace DSP {

/// Lowers what is above `level` to it; NaN stays.
VectorStatus ippsThreshold_GT_32f_I(float *srcDst, int len, float level);

/// result = sum of a[i] x b[i], summed as four partial sums of every fourth element, the same on every
/// processor. A refused call gives 0.
VectorStatus ippsDotProd_32f(const float *a, const float *b, int len, float *result);

VectorStatus ippsConvert_32f64f(const float *src, double *dst, int len);

/// Narrows; beyond the range of a float comes the largest finite one of that sign. NaN stays.
VectorStatus ippsConvert_64f32f(const double *src, float *dst, int len);

VectorStatus ippsCopy_8u(const uint8_t *src, uint8_t *dst, int len);

/// A copy whose arrays may overlap.
VectorStatus ippsMove_32f(const float *src, float *dst, int len);
VectorStatus ippsSet_32f(float value, float *dst, int len);

} // namespace DSP
