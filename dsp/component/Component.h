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
#include "dsp/parameters/Parameter.h"

namespace DSP {

class PluginLink;

/// Base of every element of the chain: a name, locks, a block entry, and its parameters as lists that host,
/// editor and state walk by kind and index, whatever the class.
/// Thread  run(): audio, under `lock`. Parameter operations: any; setters say themselves whether they lock
/// State   `settingLock` is held by who sets a value and derives others from it, and is taken before `lock`.
///         The audio thread takes it where a block has to resume the chain first (setSampleRate), and where
///         envelopes set values
/// Errors  parameter indices are the caller's duty: they run below the counts
class Component {
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

    virtual uint32_t numFloatParams() const = 0;
    virtual float floatParamValue(uint32_t i) const = 0;
    virtual void setFloatParamValue(uint32_t i, float value) = 0;
    virtual const String &floatParamName(uint32_t i) const = 0;
    virtual const String &floatParamLabel(uint32_t i) const = 0;
    virtual FloatRange floatParamRange(uint32_t i) const = 0;
    virtual float floatParamDefault(uint32_t i) const = 0;
    virtual ParamGroup floatParamGroup(uint32_t i) const = 0;
    virtual bool floatParamAutomatable(uint32_t i) const = 0;
    virtual uint32_t floatParamPersistence(uint32_t i) const = 0;
    virtual uint32_t floatParamScope(uint32_t i) const = 0;
    virtual bool floatParamShowsMinusInf(uint32_t i) const = 0;
    virtual void setFloatParamShowsMinusInf(uint32_t i, bool on) = 0;
    virtual uint32_t floatParamHighlight(uint32_t i) const = 0;
    virtual void setFloatParamHighlight(uint32_t i, uint32_t colour) = 0;
    virtual void setFloatParamHostIndex(uint32_t i, OptionalIndex index) = 0;
    virtual OptionalIndex floatParamHostIndex(uint32_t i) const = 0;
    virtual void setFloatParamEditing(uint32_t i, bool on) = 0;
    virtual bool floatParamEditing(uint32_t i) const = 0;

    virtual uint32_t numBoolParams() const = 0;
    virtual bool boolParamValue(uint32_t i) const = 0;
    virtual void setBoolParamValue(uint32_t i, bool value) = 0;
    virtual const String &boolParamName(uint32_t i) const = 0;
    virtual const String &boolParamLabel(uint32_t i) const = 0;
    virtual bool boolParamDefault(uint32_t i) const = 0;
    virtual ParamGroup boolParamGroup(uint32_t i) const = 0;
    virtual bool boolParamAutomatable(uint32_t i) const = 0;
    virtual uint32_t boolParamPersistence(uint32_t i) const = 0;
    virtual uint32_t boolParamScope(uint32_t i) const = 0;
    virtual uint32_t boolParamHighlight(uint32_t i) const = 0;
    virtual void setBoolParamHighlight(uint32_t i, uint32_t colour) = 0;
    virtual void setBoolParamHostIndex(uint32_t i, OptionalIndex index) = 0;
    virtual OptionalIndex boolParamHostIndex(uint32_t i) const = 0;
    virtual bool boolParamHasValueNames(uint32_t i) const = 0;
    virtual void boolParamValueNames(uint32_t i, std::vector<String> &out) const = 0;
    virtual void setBoolParamEditing(uint32_t i, bool on) = 0;
    virtual bool boolParamEditing(uint32_t i) const = 0;

    virtual uint32_t numIntParams() const = 0;
    virtual uint32_t intParamValue(uint32_t i) const = 0;
    virtual void setIntParamValue(uint32_t i, uint32_t value) = 0;
    virtual const String &intParamName(uint32_t i) const = 0;
    virtual const String &intParamLabel(uint32_t i) const = 0;
    virtual IntRange intParamRange(uint32_t i) const = 0;
    virtual uint32_t intParamDefault(uint32_t i) const = 0;
    virtual ParamGroup intParamGroup(uint32_t i) const = 0;
    virtual bool intParamAutomatable(uint32_t i) const = 0;
    virtual uint32_t intParamPersistence(uint32_t i) const = 0;
    virtual uint32_t intParamScope(uint32_t i) const = 0;
    virtual bool intParamHasValueNames(uint32_t i) const = 0;
    virtual void intParamValueNames(uint32_t i, std::vector<String> &out) const = 0;
    virtual uint32_t intParamHighlight(uint32_t i) const = 0;
    virtual void setIntParamHighlight(uint32_t i, uint32_t colour) = 0;
    virtual void setIntParamHostIndex(uint32_t i, OptionalIndex index) = 0;
    virtual OptionalIndex intParamHostIndex(uint32_t i) const = 0;
    virtual void setIntParamEditing(uint32_t i, bool on) = 0;
    virtual bool intParamEditing(uint32_t i) const = 0;

    virtual uint32_t numExtraParams() const = 0;
    virtual uint32_t extraParamValue(uint32_t i) const = 0;
    virtual void setExtraParamValue(uint32_t i, uint32_t value) = 0;
    virtual const String &extraParamName(uint32_t i) const = 0;
    virtual const String &extraParamLabel(uint32_t i) const = 0;
    virtual IntRange extraParamRange(uint32_t i) const = 0;
    virtual uint32_t extraParamDefault(uint32_t i) const = 0;
    virtual ParamGroup extraParamGroup(uint32_t i) const = 0;
    virtual bool extraParamAutomatable(uint32_t i) const = 0;
    virtual uint32_t extraParamPersistence(uint32_t i) const = 0;
    virtual uint32_t extraParamScope(uint32_t i) const = 0;
    virtual uint32_t extraParamHighlight(uint32_t i) const = 0;
    virtual void setExtraParamHighlight(uint32_t i, uint32_t colour) = 0;
    virtual void setExtraParamHostIndex(uint32_t i, OptionalIndex index) = 0;
    virtual OptionalIndex extraParamHostIndex(uint32_t i) const = 0;
    virtual void setExtraParamEditing(uint32_t i, bool on) = 0;
    virtual bool extraParamEditing(uint32_t i) const = 0;

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
    void notifyParameterChanged() {} // for setters; nothing asks what was touched
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
