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
