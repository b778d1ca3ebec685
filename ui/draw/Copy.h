#pragma once
#include <cstdint>

#include "platform/Geometry.h"
#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"

/// Copies between images, clipped to both. `fade` is added to every pixel's inverted alpha: 0 draws the image
/// unchanged, 255 draws nothing.
/// Thread  window thread
/// Errors  an empty image draws nothing
namespace UI::Native {

/// If `useAlpha` is false and `fade` is 0, pixels are copied unchanged, alpha included.
void copyImage(const SurfaceRef &from, const Rect &source, const SurfaceRef &to, Point at, bool useAlpha,
               uint8_t fade);

void drawPixmap(const PixmapRef &from, const Rect &source, const SurfaceRef &to, Point at, uint8_t fade);
/// Draws the whole image.
void drawPixmap(const PixmapRef &from, const SurfaceRef &to, Point at);

} // namespace UI::Native
