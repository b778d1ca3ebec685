#include "ui/draw/Pixmap.h"

#include <new>

#include "ui/draw/Png.h"

namespace UI::Native {

PixmapRef loadPixmap(const String &name)
try {
    const Png png(name);
    if (png.isEmpty()) return {};
    const uint32_t width = png.width(), height = png.height();
    const auto pixels = std::make_shared_for_overwrite<uint32_t[]>(size_t{width} * height);
    const bool hasAlpha = png.convert(pixels.get(), width);
    return std::make_shared<Pixmap>(
        Pixmap{pixels, width, static_cast<int32_t>(width), static_cast<int32_t>(height), hasAlpha});
} catch (const std::bad_alloc &) {
    return {};
}

} // namespace UI::Native
