#include "ui/draw/Surface.h"

#include <new>

#include "ui/draw/Png.h"

namespace UI::Native {

Surface::Surface(int32_t width, int32_t height, uint32_t mode)
    : target(width, height, mode == 0 ? Platform::Bitmap::Format::colour : Platform::Bitmap::Format::mask)
{
}

SurfaceRef loadSurface(const String &name)
try {
    const Png png(name);
    if (png.isEmpty()) return {};
    auto surface =
        std::make_shared<Surface>(static_cast<int32_t>(png.width()), static_cast<int32_t>(png.height()));
    if (surface->isEmpty()) return {};
    png.convert(surface->pixels(), surface->stride());
    return surface;
} catch (const std::bad_alloc &) {
    return {};
}

} // namespace UI::Native
