#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// Further vector operations; see also dsp/kernels/VectorOperations.h. Part of the interface; no stage uses them.
/// Shape   `len` elements. Except for ippsMove_32f, the arrays of a call are identical or do not overlap
/// Thread  any; no state, no allocation
/// Errors  -8 for a null pointer, -6 for a length below 1, both without changing data. Copies and fills accept a
///         length of 0 with any pointers
namespace DSP {

/// Clips values above `level`. NaN is unchanged.
VectorStatus ippsThreshold_GT_32f_I(float *srcDst, int len, float level);

/// result = sum of a[i] x b[i], or 0 on an error. Four partial sums, each of every fourth element, give the same
/// bits on every processor.
VectorStatus ippsDotProd_32f(const float *a, const float *b, int len, float *result);

VectorStatus ippsConvert_32f64f(const float *src, double *dst, int len);

/// Values outside the range of a float are clipped to -FLT_MAX or FLT_MAX. NaN is preserved.
VectorStatus ippsConvert_64f32f(const double *src, float *dst, int len);

VectorStatus ippsCopy_8u(const uint8_t *src, uint8_t *dst, int len);

/// Copies; the arrays may overlap.
VectorStatus ippsMove_32f(const float *src, float *dst, int len);
VectorStatus ippsSet_32f(float value, float *dst, int len);

} // namespace DSP
