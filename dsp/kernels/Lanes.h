#pragma once
/// Vector types for kernels.
/// Types     F4, F8 floats; D2, D4 doubles; I4, I8 int32; M4, M8 masks of floats; MD2, MD4 masks of doubles.
///           F8, D4 and I8 consist of two F4, D2 or I4. Lane 0 is the first in memory. A new operation must be
///           added to the file of every variant
/// Variants  a kernel file is compiled once per instruction-set variant; SET is the variant's name and namespace.
///           Functions here must be static: of inline functions with external linkage the linker keeps one copy,
///           which may use instructions that the processor lacks
/// Bits      identical in every variant: one IEEE operation per lane, rounded to nearest, never fused or
///           approximated. Only the payload of a NaN computed from two NaNs is unspecified
/// Exact     min(a, b) is a < b ? a : b and max(a, b) is a > b ? a : b, so each returns b if a lane has a NaN or
///           both are zero. keep(m, a) is a where m is set, otherwise 0. Mask lanes are all ones or all zeros
#ifndef SET
#error "compile kernel files with SET=<variant> and SET_<VARIANT> (see dsp/kernels/CMakeLists.txt)"
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
