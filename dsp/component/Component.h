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

/// Base class of every stage and meter: name, locks, block processing and parameters.
/// Thread  run(): audio; takes `lock`
/// Locks   a setter that derives other values holds `settingLock`, taken before `lock`. The audio thread takes
///         `settingLock` only where a block must resume the chain first (setSampleRate) or automation sets values
class Component : public ParameterOwner {
public:
    Component(const Component &) = delete;
    Component &operator=(const Component &) = delete;

    virtual void setSampleRate(uint32_t /*hz*/) {}
    virtual void suspend() {}
    /// True if the chain uses the component. Read by updateComponents.
    virtual bool isActive() const = 0;
    /// True if an envelope automates inputs of process other than the parameters.
    virtual bool hasAutomation() const { return false; }
    /// True if process follows the envelopes itself; it then gets whole blocks.
    virtual bool ownsTiming() const { return false; }
    /// Size in bytes of the state that a saved program contains besides the parameters. The state is saved unless
    /// stateKind returns kNoOwnState.
    virtual uint32_t stateSize() const { return 0; }
    virtual uint32_t stateKind() const { return kNoOwnState; }
    virtual void writeState(Util::DataStream & /*stream*/, uint32_t /*offset*/) const {}
    virtual void readState(Util::DataStream & /*stream*/, uint32_t /*offset*/) {}
    static constexpr uint32_t kNoOwnState = 5;

    /// Processes a block in place.
    virtual void process(const Block & /*block*/) {}
    /// Called by the chain for every block. A component that is switched off does not change the signal. Returns
    /// true if automation changed a parameter.
    bool run(const Now &now, const Block &block);
    /// Like run, but takes no locks and does not check isSwitchedOn. Follows the envelopes if they are enabled.
    bool runBlock(const Now &now, const Block &block);
    virtual ~Component();
    /// Clears the audio state; parameters keep their values.
    virtual void reset() = 0;
    virtual void beginStateLoad() {}
    virtual void endStateLoad() {}
    /// Delay in samples, without framing.
    virtual uint32_t latency() const { return 0; }

    void resetComponent() { reset(); }
    /// Delay in samples, including framing.
    uint32_t totalLatency();
    /// Sets the frame length of a component that processes whole frames; this delays by size - 1 samples. 0: no
    /// framing.
    void setFraming(uint32_t size, uint32_t inputs, uint32_t outputs);
    /// Sets the highlight colour of the parameters that have an envelope, and clears that of all others.
    void setHighlightColour(uint32_t colour);
    void setNotificationsEnabled(bool /*on*/) {} // components send no notifications
    bool isSwitchedOn() const { return active; }
    void setSwitchedOn(bool on) { active = on; }
    void setMeterEnabled(bool on) { meterEnabled = on; }
    bool isMeterEnabled() const { return meterEnabled; }
    const String &componentName() const { return name; }
    EnvelopeHandler &envelopeHandler() { return *envelopes; }
    const EnvelopeHandler &envelopeHandler() const { return *envelopes; }

protected:
    Component(PluginLink &plugin, const String &name);

    /// Derived constructors call it once their parameter lists are complete.
    void finishConstruction();
    void requestActiveUpdate();
    void requestLatencyUpdate();

    std::unique_ptr<EnvelopeHandler> envelopes;
    Util::NamedLock lock;        // held during a block, and to change data that process uses
    Util::NamedLock settingLock; // serialises setters; see above
    PluginLink &plugin;
    const String name;

private:
    uint32_t frameSize = 0; // samples; see setFraming
    bool active = false;    // result of isActive at the last updateComponents
    Util::Shared<bool> meterEnabled = true;
};

} // namespace DSP
