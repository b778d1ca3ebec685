#pragma once
#include "platform/offscreen/OffscreenWindowSystem.h"

namespace Platform {

struct OffscreenWindowSystem::Window {
    WindowHandle handle = nullptr, parent = nullptr;
    std::string className, title;
    Rect place{}; // in the parent, or on the screen
    WindowClient *client = nullptr;
    bool visible = true;
    std::vector<WindowHandle> children; // from the lowest to the topmost
    Bitmap pixels;
    Rect dirty{};       // asks for a paint event; empty if nothing does
    bool erase = false; // and for an erase event before it

    Rect bounds() const { return Rect::at({}, place.width(), place.height()); }
    /// Fresh pixels of the window's size, all of them to be painted.
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
