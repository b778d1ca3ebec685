#pragma once
#include <cstdint>
#include <memory>

#include "PluginBase/Util/String.h"
#include "platform/Bitmap.h"
#include "platform/Geometry.h"

namespace UI::Native {

/// A bitmap that controls draw their pictures into and copy to the screen.
/// Pixels  0xAARRGGBB, top row first, initially 0
/// Thread  window thread
/// Errors  isEmpty() if the size is invalid or memory runs out; width() and height() are then -1
class Surface {
public:
    /// `mode` 0: 32-bit pixels; other modes: 8-bit pixels.
    Surface(int32_t width, int32_t height, uint32_t mode = 0);

    bool isEmpty() const { return target.isEmpty(); }
    int32_t width() const { return isEmpty() ? -1 : target.width(); }
    int32_t height() const { return isEmpty() ? -1 : target.height(); }
    /// The whole surface; empty if the surface is empty.
    Rect bounds() const { return Rect::at({}, target.width(), target.height()); }
    /// Distance between rows: in pixels for mode 0, in bytes for other modes.
    uint32_t stride() const { return isColour() ? target.bytesPerRow() / 4 : target.bytesPerRow(); }
    /// Start of the top row; null if the surface is empty or its mode is not 0.
    uint32_t *pixels() const { return isColour() ? static_cast<uint32_t *>(target.pixels()) : nullptr; }
    /// The bitmap that the window system copies from and draws text into.
    Platform::Bitmap &bitmap() { return target; }
    const Platform::Bitmap &bitmap() const { return target; }

private:
    bool isColour() const { return target.format() == Platform::Bitmap::Format::colour; }

    Platform::Bitmap target;
};

using SurfaceRef = std::shared_ptr<Surface>;

/// Decodes an embedded image into a new surface.
/// Thread  window thread
/// Errors  null if the file is missing or damaged, or memory runs out
SurfaceRef loadSurface(const String &name);

} // namespace UI::Native
