#pragma once
#include <cstdint>

#include "platform/Geometry.h"

/// Rectangles of one colour, 0xRRGGBB, in an array of pixels with `stride` of them from row to row. Only what
/// lies in `clip` too is touched. `fade` is the inverted alpha: 0 opaque, 255 invisible.
/// Thread  the window's
namespace UI::Native {

/// The inside, edges included.
void fillRect(uint32_t *pixels, uint32_t stride, const Rect &area, const Rect &clip, uint32_t colour,
              uint8_t fade);
/// The edges alone, of what is left of `area` in `clip`. A translucent corner belongs to two edges, and gets
/// both.
void drawRect(uint32_t *pixels, uint32_t stride, const Rect &area, const Rect &clip, uint32_t colour,
              uint8_t fade);

} // namespace UI::Native
