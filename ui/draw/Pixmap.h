#pragma once
#include <cstdint>
#include <memory>

#include "PluginBase/Util/String.h"

namespace UI::Native {

/// A read-only image with transparency per pixel.
/// Pixels  0xAARRGGBB, top row first; AA is inverted alpha: 0 opaque, 255 transparent
struct Pixmap {
    std::shared_ptr<const uint32_t[]> pixels;
    uint32_t stride = 0;             // pixels between row starts
    int32_t width = -1, height = -1; // pixels
    bool hasAlpha = false;           // if false, drawing copies whole rows
};

using PixmapRef = std::shared_ptr<const Pixmap>;

/// Decodes an embedded image. Nothing is cached.
/// Thread  window thread
/// Errors  null if the file is missing or damaged, or memory runs out
PixmapRef loadPixmap(const String &name);

} // namespace UI::Native
