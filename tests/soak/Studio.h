#pragma once
#include <array>
#include <memory>
#include <vector>

#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/signals/Signals.h"
#include "tests/soak/SoakedEffect.h"

/// A host with its effects, each with a window for its editor, all side by side on one screen.
/// Thread  the window's, but for reading `effects` and `sounds`, which stay
class Studio {
public:
    Studio(uint64_t seed, uint32_t instances);
    /// Closes everything, and requires that nothing is left.
    ~Studio();
    Studio(const Studio &) = delete;

    SoakedEffect &effect(uint32_t i) { return *effects[i]; }
    uint32_t size() const { return static_cast<uint32_t>(effects.size()); }
    Point corner(uint32_t i) const;
    void open(uint32_t i);
    void close(uint32_t i);
    /// The host's window, before the editor or with it closed.
    void destroyWindow(uint32_t i);
    /// The next from there on whose editor is open; null for none.
    SoakedEffect *nextOpen(uint32_t i);
    void requireRest();

    Platform::OffscreenWindowSystem system; // first: everything else stands on it
    static constexpr uint32_t kSoundFrames = 65536;
    const std::array<Audio, 4> sounds;

private:
    std::vector<std::unique_ptr<SoakedEffect>> effects;
    std::vector<Platform::WindowHandle> windows;
};
