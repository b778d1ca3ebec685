#pragma once
#include <cstdint>

#include "dsp/numerics/VectorStatus.h"

/// Arithmetic on rectangles of 4-byte pixels, for translucent fills.
/// Shape   `width` by `height` pixels; rows are `step` bytes apart
/// Errors  return -8 for a null pointer and -6 for a width or height below 1, and change no pixel
namespace DSP {

/// Adds `value` to the first three bytes of each pixel, saturating at 255. The fourth byte stays unchanged.
/// `scale` must be 0; other values return -6.
VectorStatus ippiAddC_8u_AC4IRSfs(const uint8_t value[3], uint8_t *srcDst, int step, int width, int height,
                                  int scale);

/// Scales the first three bytes of each pixel, the colours, by alpha / 255: with p = colour x alpha the result is
/// (p + (p >> 8) + 1) >> 8. Sets the fourth byte to alpha.
VectorStatus ippiAlphaPremulC_8u_AC4IR(uint8_t alpha, uint8_t *srcDst, int step, int width, int height);

} // namespace DSP
