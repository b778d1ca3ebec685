#pragma once
#include "dsp/numerics/VectorStatus.h"

/// Double-precision IIR filters in transposed direct form II. Part of the interface; no stage uses them.
/// Origin  Smith, "Introduction to Digital Filters", chapter 9
namespace DSP {

/// A filter and its delay line: a single direct form or a cascade of sections.
/// Shape   the delay line has `order` values, or two per section
/// Thread  one at a time; InitAlloc and Free allocate, ippsIIR_64f does not
/// Errors  -8 for a null pointer, -6 for a length, order or section count below 1, both without changing data.
///         Throws std::bad_alloc
struct IppsIIRState_64f;

/// `taps` are b0 to b[order], then a0 to a[order]. `delay` initialises the delay line; null clears it.
VectorStatus ippsIIRInitAlloc_64f(IppsIIRState_64f **state, const double *taps, int order,
                                  const double *delay);

/// `taps` are b0 b1 b2 a0 a1 a2 for each section, in processing order.
VectorStatus ippsIIRInitAlloc_BiQuad_64f(IppsIIRState_64f **state, const double *taps, int sections,
                                         const double *delay);

/// Copies the delay line to `delay`, from which ippsIIRSetDlyLine_64f can restore it.
VectorStatus ippsIIRGetDlyLine_64f(const IppsIIRState_64f *state, double *delay);

/// Loads the delay line; null clears it.
VectorStatus ippsIIRSetDlyLine_64f(IppsIIRState_64f *state, const double *delay);

/// Filters a block; `src` and `dst` may be the same array.
VectorStatus ippsIIR_64f(const double *src, double *dst, int len, IppsIIRState_64f *state);

VectorStatus ippsIIRFree_64f(IppsIIRState_64f *state);

} // namespace DSP
