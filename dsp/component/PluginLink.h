#pragma once
#include <cstdint>
#include <span>

namespace DSP {

class Component;

/// Interface through which components call the plug-in that owns them. The plug-in implements it, so that this
/// layer does not depend on it.
class PluginLink {
public:
    /// Codes of messages to the editor's window. Any thread may post them; posting does not block.
    enum Message : uint32_t {
        refreshControls = 0,
        stateLoaded = 1,
        playingStarted = 2,
        playingStopped = 3,
        sampleRateChanged = 4,
        channelCountChanged = 5,
        latencyMoved = 6,
        renderTimingChanged = 11,
        backgroundGridChanged = 12,
    };

    /// Appends to componentList, whose order is part of the saved format. During construction only.
    virtual void registerComponent(Component *component) = 0;
    virtual std::span<Component *const> componentList() const = 0;

    // Both requests are ignored while the host changes the program.
    virtual void requestActiveUpdate() = 0;
    virtual void requestLatencyUpdate() = 0;
    virtual void postMessage(uint32_t code) = 0;
    /// Clears the chain's audio state. Does nothing until the chain is constructed.
    virtual void resetChain() = 0;
    /// Applies "Global: Meter Enable" to all components.
    virtual void propagateMeterEnable() = 0;
    virtual void delayCompensationChanged() = 0;

protected:
    ~PluginLink() = default;
};

} // namespace DSP
