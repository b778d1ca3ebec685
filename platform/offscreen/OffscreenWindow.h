#pragma once
#include "platform/offscreen/OffscreenWindowSystem.h"

namespace Platform {

struct OffscreenWindowSystem::Window {
    WindowHandle handle = nullptr, parent = nullptr;
    std::string className, title;
    Rect place{}; // in the parent; on the screen without a parent
    WindowClient *client = nullptr;
    bool visible = true;
    std::vector<WindowHandle> children; // from the lowest to the topmost
    Bitmap pixels;
    Rect dirty{};       // area that needs a paint event; empty: none
    bool erase = false; // an erase event must precede the paint event

    Rect bounds() const { return Rect::at({}, place.width(), place.height()); }
    /// Allocates new pixels of the window's size and marks them as dirty.
    void resize()
    {
        pixels = Bitmap(place.width(), place.height(), Bitmap::Format::colour);
        dirty = bounds();
    }
};

inline uint32_t &pixelAt(const Bitmap &bitmap, Point at)
{
    return static_cast<uint32_t *>(bitmap.pixels())[static_cast<int64_t>(at.y) * bitmap.width() + at.x];
}

} // namespace Platform
