#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// Arithmetic on rectangles of 4-byte pixels, for translucent fills.
/// Shape   `step` bytes from row to row, `width` by `height` pixels
/// Errors  a null pointer gives -8, a width or height below 1 gives -6, and nothing is changed
namespace DSP {

/// Adds a constant to each of the first three bytes, held at 255; the fourth stays. `scale` would be a shift
/// of the sum; only 0 is known, another gives -6.
VectorStatus ippiAddC_8u_AC4IRSfs(const uint8_t value[3], uint8_t *srcDst, int step, int width, int height,
                                  int scale);

/// Scales the colours, which are the first three bytes, by alpha / 255: for p = colour x alpha the result is
/// (p + (p >> 8) + 1) >> 8. The fourth byte becomes alpha.
VectorStatus ippiAlphaPremulC_8u_AC4IR(uint8_t alpha, uint8_t *srcDst, int step, int width, int height);

} // namespace DSP
