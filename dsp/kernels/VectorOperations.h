#pragma once
#include "dsp/kernels/Kernels.h"
#include "dsp/numerics/VectorStatus.h"

/// Arithmetic and copies on blocks of samples.
/// Shape   the arrays of a call are identical or do not overlap
/// Thread  any; no state, no allocation
namespace DSP {

inline void copySamples(const float *from, float *to, uint32_t count)
{
    Kernels::active().block.copy(from, to, count);
}
inline void addSamples(const float *from, float *to, uint32_t count)
{
    Kernels::active().block.add(from, to, count);
}
inline void multiplySamples(const float *from, float *to, uint32_t count)
{
    Kernels::active().block.multiply(from, to, count);
}
/// A factor of 0 clears the samples, even NaN; a factor of 1 leaves them unchanged.
void scaleSamples(float factor, float *samples, uint32_t count);
void clearSamples(float *samples, uint32_t count);

// Public names for these operations, with checked arguments. A null pointer returns -8 and a length below 1 returns
// -6, both without changing data. Copies and clears accept a length of 0 with any pointers.

VectorStatus ippsAdd_32f_I(const float *src, float *srcDst, int len);
VectorStatus ippsMul_32f_I(const float *src, float *srcDst, int len);
VectorStatus ippsMulC_32f_I(float value, float *srcDst, int len);
VectorStatus ippsCopy_32f(const float *src, float *dst, int len);
VectorStatus ippsZero_32f(float *dst, int len);

} // namespace DSP
