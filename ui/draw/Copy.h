#pragma once
#include <cstdint>

#include "platform/Geometry.h"
#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"

/// Copies between images, cut to both of them. `fade` is added to every pixel's inverted alpha: 0 draws the
/// image as it is, 255 not at all.
/// Thread  the window's
/// Errors  an empty image, or nothing left after the cut: nothing happens
namespace UI::Native {

/// Without `useAlpha` and `fade` the words are copied as they are.
void copyImage(const SurfaceRef &from, const Rect &source, const SurfaceRef &to, Point at, bool useAlpha,
               uint8_t fade);

void drawPixmap(const PixmapRef &from, const Rect &source, const SurfaceRef &to, Point at, uint8_t fade);
/// All of it.
void drawPixmap(const PixmapRef &from, const SurfaceRef &to, Point at);

} // namespace UI::Native
