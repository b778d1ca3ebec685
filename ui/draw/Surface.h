#pragma once
#include <cstdint>
#include <memory>

#include "PluginBase/Util/String.h"
#include "platform/Bitmap.h"
#include "platform/Geometry.h"

namespace UI::Native {

/// A bitmap to draw into and to copy to the screen; every control composes its picture in one.
/// Pixels  0xAARRGGBB from the top row down, all 0 at first
/// Thread  window thread
/// Errors  an impossible size or no memory: isEmpty(), without pixels and with -1 for both sides
class Surface {
public:
    /// `mode` 0 has pixels of 32 bits, any other of 8.
    Surface(int32_t width, int32_t height, uint32_t mode = 0);

    bool isEmpty() const { return target.isEmpty(); }
    int32_t width() const { return isEmpty() ? -1 : target.width(); }
    int32_t height() const { return isEmpty() ? -1 : target.height(); }
    /// All of it; empty if the surface is.
    Rect bounds() const { return Rect::at({}, target.width(), target.height()); }
    /// From row to row, in pixels for mode 0 and in bytes for others.
    uint32_t stride() const { return isColour() ? target.bytesPerRow() / 4 : target.bytesPerRow(); }
    /// The top row; null if empty or of another mode than 0.
    uint32_t *pixels() const { return isColour() ? static_cast<uint32_t *>(target.pixels()) : nullptr; }
    /// What the window system copies from and draws text into.
    Platform::Bitmap &bitmap() { return target; }
    const Platform::Bitmap &bitmap() const { return target; }

private:
    bool isColour() const { return target.format() == Platform::Bitmap::Format::colour; }

    Platform::Bitmap target;
};

using SurfaceRef = std::shared_ptr<Surface>;

/// Decodes an embedded image into a new surface.
/// Thread  window thread
/// Errors  no such file, not readable, no memory: the empty handle
SurfaceRef loadSurface(const String &name);

} // namespace UI::Native
