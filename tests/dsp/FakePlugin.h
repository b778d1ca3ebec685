#pragma once
#include <span>
#include <vector>

#include "dsp/component/Component.h"
#include "dsp/component/PluginLink.h"
#include "tests/signals/Blocks.h"

/// Plug-in for testing a single component; counts the component's requests.
class FakePlugin final : public DSP::PluginLink {
public:
    void registerComponent(DSP::Component *component) override { components.push_back(component); }
    std::span<DSP::Component *const> componentList() const override { return components; }
    void requestActiveUpdate() override { ++activeRequests; }
    void requestLatencyUpdate() override {}
    void postMessage(uint32_t code) override { messages.push_back(code); }
    void resetChain() override { ++chainResets; }
    void propagateMeterEnable() override {}
    void delayCompensationChanged() override {}

    std::vector<DSP::Component *> components;
    std::vector<uint32_t> messages;
    int activeRequests = 0, chainResets = 0;
};

/// A single component, called in the same order as by the chain.
template <class T>
struct Rig {
    template <class... Arguments>
    explicit Rig(Arguments &&...arguments) : component(plugin, arguments...)
    {
        component.setSwitchedOn(true);
        resume(44100);
        resume(44100);
    }
    /// Resets at the old rate first, as the chain does.
    void resume(uint32_t hz)
    {
        component.resetComponent();
        setSampleRate(hz);
    }
    void setSampleRate(uint32_t hz)
    {
        rate = hz;
        component.setSampleRate(hz);
    }
    /// True if automation moved a parameter.
    bool run(const DSP::Block &block) { return component.run({rate, 0, 50}, block); }
    /// Sets the same random rate in the component and in `reference`, with or without a reset first.
    template <class Reference>
    uint32_t drawRate(Signals::Random &random, Reference &reference)
    {
        const uint32_t hz = ::drawRate(random);
        if (random.chance(0.5)) {
            component.resetComponent();
            reference.reset();
        }
        setSampleRate(hz);
        reference.setSampleRate(hz);
        return hz;
    }
    T *operator->() { return &component; }

    FakePlugin plugin;
    T component;
    uint32_t rate = 44100;
};
