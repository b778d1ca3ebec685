#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "PluginBase/Util/AlignedBuffer.h"
#include "PluginBase/Util/DataStream.h"
#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/OptionalIndex.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"
#include "dsp/automation/EnvelopeHandler.h"
#include "dsp/component/Bands.h"
#include "dsp/component/BlockFramer.h"
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
    /// Whether a parameter of the watch lists is automated by an envelope.
    virtual bool hasAutomation() const;
    /// Whether process reads the envelopes itself, from `blockTime` on: it then gets every block whole.
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

    /// The concrete block code, in place; `right` is null for mono. Returns the frames done.
    virtual uint32_t process(uint32_t frames, float *left, float *right);
    /// The block entry of the chain. One that is switched off returns at once, the signal untouched.
    /// `bandsLeft`, `bandsRight` are the four band buffers for the two components that work on all bands at
    /// once, null for the others.
    virtual uint32_t run(uint32_t sampleRate, const int64_t *streamTime, uint32_t zipperSamples,
                         bool *refreshFlag, uint32_t frames, float *left, float *right, bool force,
                         float *const *bandsLeft, float *const *bandsRight);
    virtual ~Component();
    /// Clears audio state; parameters stay.
    virtual void reset() = 0;
    virtual void beginStateLoad() {}
    virtual void endStateLoad() {}
    /// Samples by which the component delays, without framing.
    virtual uint32_t latency() const { return 0; }
    /// Body of run where envelopes are followed: cuts the block into steps of `zipperSamples`, sets at each
    /// the parameters that have an envelope and that the user does not hold, and processes it. `refreshFlag`
    /// is raised if a value moved, `abort` if the framing did: what is left of the block then stays as it is.
    /// A component with nothing to automate has no steps.
    virtual uint32_t runBlock(uint32_t sampleRate, const int64_t *streamTime, uint32_t zipperSamples,
                              bool *refreshFlag, uint32_t frames, float *left, float *right, bool *abort);

    void resetComponent();
    /// Samples of delay of framing and component together.
    uint32_t totalLatency();
    void setFraming(uint32_t frameSize, uint32_t inputs, uint32_t outputs);
    /// Colours the parameters that an envelope automates; all others get none.
    void setHighlightColour(uint32_t colour);
    void setNotificationsEnabled(bool on) { notificationsEnabled = on; }
    bool isSwitchedOn() const { return active; }
    void setSwitchedOn(bool on) { active = on; }
    void setMeterEnabled(bool on) { meterEnabled = on; }
    bool isMeterEnabled() const { return meterEnabled; }
    void setBandIndex(uint32_t band) { bandIndex = band; }
    const String &componentName() const { return name; }
    EnvelopeHandler &envelopeHandler() { return *envelopes; }
    const EnvelopeHandler &envelopeHandler() const { return *envelopes; }

protected:
    /// With `usesScratch` the steps of an automated block are processed in buffers of the component's own.
    Component(PluginLink &plugin, const String &name, uint32_t usesScratch = 0);

    /// Last call of a concrete constructor, when the parameter lists are complete.
    void finishConstruction();
    void notifyParameterChanged();
    void requestActiveUpdate();
    void requestLatencyUpdate();

    std::unique_ptr<EnvelopeHandler> envelopes;
    int64_t blockTime = 0; // of the first sample, 100 ns; kept only for a component that ownsTiming
    std::vector<uint32_t> floatWatch, boolWatch, intWatch; // parameters that hasAutomation looks at
    float *const *bandOutLeft = nullptr; // the four bands during process, if run was given band pointers
    float *const *bandOutRight = nullptr;
    Util::NamedLock lock;        // held for a block, and to change what a block works on
    Util::NamedLock settingLock; // keeps setters apart; see above
    PluginLink &plugin;
    const String name;
    const uint32_t usesScratch;
    uint32_t bandIndex = 0; // the band that the next process call of Dynamics works on
    BlockFramer framer;
    std::vector<uint32_t> automatedFloats, automatedBools, automatedInts, automatedExtras;
    // the values of the automated parameters at each step of a block; empty where there is no envelope
    std::vector<std::vector<float>> floatSteps;
    std::vector<std::vector<bool>> boolSteps;
    std::vector<std::vector<uint32_t>> intSteps;
    uint32_t stepFrames = 0; // of the longest block that they have room for
    Util::AlignedBuffer<float> scratchLeft, scratchRight;
    bool active = false;       // isActive when updateComponents last asked
    bool deactivating = false; // lets run work on while `active` is off
    Util::Shared<bool> meterEnabled = true;
    Util::Shared<bool> notificationsEnabled = false;

private:
    void evaluateSteps(const EnvelopeGrid &grid);
    /// True if a value moved.
    bool applyStep(uint32_t step);
};

} // namespace DSP
