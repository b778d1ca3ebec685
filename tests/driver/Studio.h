#pragma once
#include <memory>
#include <vector>

#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/driver/DrivenEffect.h"

/// A host with its effects, each with a window for its editor, all side by side on one screen.
/// Thread  the window's, but for effect() and size()
class Studio {
public:
    explicit Studio(uint32_t instances);
    /// Closes everything, and requires that nothing is left.
    ~Studio();
    Studio(const Studio &) = delete;

    DrivenEffect &effect(uint32_t i) { return *effects[i]; }
    uint32_t size() const { return static_cast<uint32_t>(effects.size()); }
    Point corner(uint32_t i) const;
    void open(uint32_t i);
    void close(uint32_t i);
    /// The host's window, before the editor or with it closed.
    void destroyWindow(uint32_t i);
    /// The next from there on whose editor is open; `i` itself if there is none.
    uint32_t nextOpen(uint32_t i) const;
    void requireRest();

    Platform::OffscreenWindowSystem system; // first: everything else stands on it

private:
    Platform::WindowHandle makeWindow(uint32_t i);

    std::vector<std::unique_ptr<DrivenEffect>> effects;
    std::vector<Platform::WindowHandle> windows;
};
