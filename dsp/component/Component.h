#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "PluginBase/Util/DataStream.h"
#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/OptionalIndex.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"
#include "dsp/automation/EnvelopeHandler.h"
#include "dsp/component/Block.h"
#include "dsp/component/ParameterOwner.h"

namespace DSP {

class PluginLink;

/// Base of every element of the chain: a name, locks, a block entry, and its parameters.
/// Thread  run(): audio, under `lock`
/// State   `settingLock` is held by who sets a value and derives others from it, and is taken before `lock`.
///         The audio thread takes it where a block has to resume the chain first (setSampleRate), and where
///         envelopes set values
class Component : public ParameterOwner {
public:
    Component(const Component &) = delete;
    Component &operator=(const Component &) = delete;

    virtual void setSampleRate(uint32_t /*hz*/) {}
    virtual void suspend() {}
    /// Whether the component takes part in the chain; asked by updateComponents.
    virtual bool isActive() const = 0;
    /// Whether an envelope automates what process reads beside the parameters.
    virtual bool hasAutomation() const { return false; }
    /// Whether process follows the envelopes itself: it then gets every block whole.
    virtual bool ownsTiming() const { return false; }
    /// Bytes of component state beside the parameters in a saved program; written unless stateKind says
    /// kNoOwnState.
    virtual uint32_t stateSize() const { return 0; }
    virtual uint32_t stateKind() const { return kNoOwnState; }
    virtual void writeState(Util::DataStream & /*stream*/, uint32_t /*offset*/) const {}
    virtual void readState(Util::DataStream & /*stream*/, uint32_t /*offset*/) {}
    static constexpr uint32_t kNoOwnState = 5;

    /// The concrete block code, in place.
    virtual void process(const Block & /*block*/) {}
    /// The block entry of the chain. A component that is switched off leaves the signal untouched. True if
    /// automation moved a parameter.
    bool run(const Now &now, const Block &block);
    /// The body of run: follows the envelopes where they are enabled, else processes the block whole.
    bool runBlock(const Now &now, const Block &block);
    virtual ~Component();
    /// Clears audio state; parameters stay.
    virtual void reset() = 0;
    virtual void beginStateLoad() {}
    virtual void endStateLoad() {}
    /// Samples by which the component delays, without framing.
    virtual uint32_t latency() const { return 0; }

    void resetComponent() { reset(); }
    /// Samples of delay of framing and component together.
    uint32_t totalLatency();
    /// Declares that the component works on whole frames of `size` samples, which delays by size - 1; 0 takes
    /// each block as it comes.
    void setFraming(uint32_t size, uint32_t inputs, uint32_t outputs);
    /// Colours the parameters that an envelope automates; all others get none.
    void setHighlightColour(uint32_t colour);
    void setNotificationsEnabled(bool /*on*/) {} // nothing is notified
    bool isSwitchedOn() const { return active; }
    void setSwitchedOn(bool on) { active = on; }
    void setMeterEnabled(bool on) { meterEnabled = on; }
    bool isMeterEnabled() const { return meterEnabled; }
    const String &componentName() const { return name; }
    EnvelopeHandler &envelopeHandler() { return *envelopes; }
    const EnvelopeHandler &envelopeHandler() const { return *envelopes; }

protected:
    Component(PluginLink &plugin, const String &name);

    /// Last call of a concrete constructor, when the parameter lists are complete.
    void finishConstruction();
    void requestActiveUpdate();
    void requestLatencyUpdate();

    std::unique_ptr<EnvelopeHandler> envelopes;
    Util::NamedLock lock;        // held for a block, and to change what a block works on
    Util::NamedLock settingLock; // keeps setters apart; see above
    PluginLink &plugin;
    const String name;

private:
    uint32_t frameSize = 0; // samples; see setFraming
    bool active = false;    // isActive when updateComponents last asked
    Util::Shared<bool> meterEnabled = true;
};

} // namespace DSP
