#pragma once
#include <cstdint>
#include <memory>

#include "PluginBase/Util/String.h"

namespace UI::Native {

/// An image to draw from, with transparency for every pixel.
/// Pixels  0xAARRGGBB from the top row down; AA is 0 for opaque and 255 for transparent
struct Pixmap {
    std::shared_ptr<const uint32_t[]> pixels;
    uint32_t stride = 0;             // pixels from row to row
    int32_t width = -1, height = -1; // pixels
    bool hasAlpha = false;           // false lets a blit copy whole rows
};

using PixmapRef = std::shared_ptr<const Pixmap>;

/// Decodes an embedded image, anew at each call.
/// Thread  window thread
/// Errors  no such file, not readable, no memory: the empty handle
PixmapRef loadPixmap(const String &name);

} // namespace UI::Native
