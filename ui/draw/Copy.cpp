#include "ui/draw/Copy.h"

#include <algorithm>
#include <cstring>

#include "ui/draw/Blend.h"

namespace UI::Native {
namespace {

struct Pixels {
    const uint32_t *first;
    uint32_t stride;
    Rect bounds;
};

void copyPixels(const Pixels &from, Rect source, const SurfaceRef &to, Point at, bool useAlpha, uint8_t fade)
{
    // Clipping one image moves the start in the other.
    const Rect inSource = source.intersected(from.bounds);
    at = at + (inSource.corner() - source.corner());
    const Rect target = Rect::at(at, inSource.width(), inSource.height()).intersected(to->bounds());
    if (inSource.isEmpty() || target.isEmpty()) return;
    const Point first = inSource.corner() + (target.corner() - at);

    const auto columns = static_cast<size_t>(target.width());
    for (int32_t row = 0; row < target.height(); ++row) {
        const uint32_t *src = from.first + static_cast<size_t>(first.y + row) * from.stride + first.x;
        uint32_t *dst = to->pixels() + static_cast<size_t>(target.top + row) * to->stride() + target.left;
        if (!useAlpha && fade == 0) {
            std::memcpy(dst, src, columns * sizeof *dst);
            continue;
        }
        for (size_t i = 0; i < columns; ++i) {
            const uint32_t a = std::min((src[i] >> 24) + fade, 255u);
            dst[i] = blend(dst[i], src[i], a, inverseAlpha(a));
        }
    }
}

} // namespace

void copyImage(const SurfaceRef &from, const Rect &source, const SurfaceRef &to, Point at, bool useAlpha,
               uint8_t fade)
{
    if (!from || !to || !from->pixels() || !to->pixels()) return;
    copyPixels({from->pixels(), from->stride(), from->bounds()}, source, to, at, useAlpha, fade);
}

void drawPixmap(const PixmapRef &from, const Rect &source, const SurfaceRef &to, Point at, uint8_t fade)
{
    if (!from || !to || !from->pixels || !to->pixels()) return;
    const Rect bounds = Rect::at({}, from->width, from->height);
    copyPixels({from->pixels.get(), from->stride, bounds}, source, to, at, from->hasAlpha, fade);
}

void drawPixmap(const PixmapRef &from, const SurfaceRef &to, Point at)
{
    if (from) drawPixmap(from, Rect::at({}, from->width, from->height), to, at, 0);
}

} // namespace UI::Native
