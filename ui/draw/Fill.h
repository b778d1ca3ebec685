#pragma once
#include <cstdint>

#include "platform/Geometry.h"

/// Draws rectangles of one colour, 0xRRGGBB, into an array with `stride` pixels per row. Only pixels inside `clip`
/// change. `fade` is the inverted alpha: 0 opaque, 255 invisible.
/// Thread  window thread
namespace UI::Native {

/// Fills `area`, edges included.
void fillRect(uint32_t *pixels, uint32_t stride, const Rect &area, const Rect &clip, uint32_t colour,
              uint8_t fade);
/// Clips `area` to `clip`, then draws its edges. Corners belong to two edges and are blended twice.
void drawRect(uint32_t *pixels, uint32_t stride, const Rect &area, const Rect &clip, uint32_t colour,
              uint8_t fade);

} // namespace UI::Native
