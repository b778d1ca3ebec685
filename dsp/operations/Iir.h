#pragma once
#include "dsp/numerics/VectorStatus.h"

/// Recursive filters in 64-bit floats, all in transposed direct form II. Part of the interface; no stage uses
/// them.
/// Origin  Smith, "Introduction to Digital Filters", chapter 9
namespace DSP {

/// A filter with its delay line: one direct form, or a cascade of sections.
/// Shape   the delay line has `order` values, or two for each section
/// Thread  one stream at a time; Init and Free allocate, ippsIIR_64f does not
/// Errors  a null pointer gives -8, a length, order or section count below 1 gives -6, and nothing is
///         changed. Memory that is out throws std::bad_alloc
struct IppsIIRState_64f;

/// Taps b0 to b[order], then a0 to a[order]. `delay` is the first delay line, null for a cleared one.
VectorStatus ippsIIRInitAlloc_64f(IppsIIRState_64f **state, const double *taps, int order,
                                  const double *delay);

/// Six taps a section, b0 b1 b2 a0 a1 a2, in the order in which the sections run.
VectorStatus ippsIIRInitAlloc_BiQuad_64f(IppsIIRState_64f **state, const double *taps, int sections,
                                         const double *delay);

/// Copies the delay line out; what it wrote can be loaded into a filter of the same shape.
VectorStatus ippsIIRGetDlyLine_64f(const IppsIIRState_64f *state, double *delay);

/// Loads the delay line; null clears it.
VectorStatus ippsIIRSetDlyLine_64f(IppsIIRState_64f *state, const double *delay);

/// Filters a block; src and dst may be the same.
VectorStatus ippsIIR_64f(const double *src, double *dst, int len, IppsIIRState_64f *state);

VectorStatus ippsIIRFree_64f(IppsIIRState_64f *state);

} // namespace DSP
