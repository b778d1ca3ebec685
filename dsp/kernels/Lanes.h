#pragma once
/// Lanes: the vector types that kernels are written in.
/// Types   F4, F8 floats; D2, D4 doubles; I4, I8 int32; M4, M8 masks of floats; MD2, MD4 masks of doubles.
///         F8, D4 and I8 are two F4, D2 or I4 side by side; lane 0 is the first in memory. The operations are
///         those that kernels use; one that is added goes into the file of every set
/// Sets    a kernel file is compiled once per instruction set, SET naming the set and its namespace, so all
///         that stands here is another entity in each. Nothing is inline with external linkage: of such
///         functions the linker keeps one copy, perhaps that of a set which the processor lacks
/// Bits    the same in every set: one IEEE operation a lane, rounded to nearest, never fused, never an
///         approximation. Only which NaN comes out of two NaNs is left open
/// Exact   min(a, b) is a < b ? a : b and max(a, b) is a > b ? a : b: b if a lane holds a NaN or two zeros.
///         keep(m, a) is a or 0. Masks are all ones or all zeros
#ifndef SET
#error "compile kernel files with SET=<set> and SET_<SET> (see dsp/kernels/CMakeLists.txt)"
#endif

#include <stddef.h>
#include <stdint.h>

#define LANES_OP [[gnu::always_inline]] static inline

#if defined(SET_PORTABLE)
#include "dsp/kernels/lanes/Portable.h"

#include "dsp/kernels/lanes/Pairs.h"
#elif defined(SET_SSE2)
#include "dsp/kernels/lanes/Sse2.h"

#include "dsp/kernels/lanes/Pairs.h"
#elif defined(SET_AVX2)
#include "dsp/kernels/lanes/Sse2.h"

#include "dsp/kernels/lanes/Avx2.h"
#endif

#include "dsp/kernels/lanes/Derived.h"
