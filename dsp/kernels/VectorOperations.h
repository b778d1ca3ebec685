#pragma once
#include "dsp/kernels/Kernels.h"
#include "dsp/numerics/VectorStatus.h"

/// Arithmetic and copies over whole blocks.
/// Shape   arrays of one call are the same or do not overlap
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
/// A factor of 1 leaves the samples alone and 0 clears them, whatever they are (NaN too).
void scaleSamples(float factor, float *samples, uint32_t count);
void clearSamples(float *samples, uint32_t count);

// The same under the names of the interface, with checked arguments: a null pointer gives -8, a length below 1
// gives -6, and nothing is changed. Copies and clears take a length of 0 as done, whatever the pointers.

VectorStatus ippsAdd_32f_I(const float *src, float *srcDst, int len);
VectorStatus ippsMul_32f_I(const float *src, float *srcDst, int len);
VectorStatus ippsMulC_32f_I(float value, float *srcDst, int len);
VectorStatus ippsCopy_32f(const float *src, float *dst, int len);
VectorStatus ippsZero_32f(float *dst, int len);

} // namespace DSP
