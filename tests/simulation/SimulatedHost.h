#pragma once
#include <memory>
#include <vector>

#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/simulation/EffectInstance.h"

/// A host with several effects. Each has a window for its editor; the windows do not overlap.
/// Thread: effect() and size() any; everything else the window thread
class SimulatedHost {
public:
    explicit SimulatedHost(uint32_t instances);
    /// Closes everything, and requires that no window or timer remains.
    ~SimulatedHost();
    SimulatedHost(const SimulatedHost &) = delete;

    EffectInstance &effect(uint32_t i) { return *effects[i]; }
    uint32_t size() const { return static_cast<uint32_t>(effects.size()); }
    Point corner(uint32_t i) const;
    void open(uint32_t i);
    void close(uint32_t i);
    /// Destroys the host's window, then closes its editor and creates a new window.
    void destroyWindow(uint32_t i);
    /// First effect with an open editor, searching from `i` and wrapping around; `i` if there is none.
    uint32_t nextOpen(uint32_t i) const;
    void requireIdle();

    Platform::OffscreenWindowSystem system; // first: the other members use it until their destruction

private:
    Platform::WindowHandle makeWindow(uint32_t i);

    std::vector<std::unique_ptr<EffectInstance>> effects;
    std::vector<Platform::WindowHandle> windows;
};
