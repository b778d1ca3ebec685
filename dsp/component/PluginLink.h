#pragma once
#include <cstdint>
#include <span>

namespace DSP {

class Component;

/// What the components ask of the plug-in that owns them. The plug-in implements it; nothing below it depends on
/// more of it than this.
class PluginLink {
public:
    /// Codes of the messages that travel to the editor's window; any thread may post, without blocking.
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

    /// Appends to the fixed order in which everything walks the components. Construction only.
    virtual void registerComponent(Component *component) = 0;
    virtual std::span<Component *const> componentList() const = 0;

    /// Nothing happens while a program is exchanged.
    virtual void requestActiveUpdate() = 0;
    virtual void requestLatencyUpdate() = 0;
    virtual void postMessage(uint32_t code) = 0;
    /// Clears all audio state of the chain, if the chain exists already.
    virtual void resetChain() = 0;
    /// Copies "Global: Meter Enable" to every component.
    virtual void propagateMeterEnable() = 0;
    virtual void delayCompensationChanged() = 0;

protected:
    ~PluginLink() = default;
};

} // namespace DSP
