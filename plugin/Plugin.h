#pragma once
#include <atomic>
#include <memory>
#include <vector>

#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/RegistryKey.h"
#include "PluginBase/Util/Shared.h"
#include "dsp/chain/Transform.h"
#include "dsp/component/PluginLink.h"
#include "plugin/ParameterTable.h"

/// Receives messages for the editor's window. post must not block, because the audio thread calls it.
class EditorWindow {
public:
    virtual void post(uint32_t code) = 0;

protected:
    ~EditorWindow() = default;
};

/// Gives the editor and the host interface access to a plug-in's components.
class TransformHandle {
public:
    explicit TransformHandle(DSP::Transform *chain) : transform(chain) {}
    DSP::Global *global() const { return transform->global(); }
    DSP::Meter::Level *level() const { return transform->level(); }
    DSP::Gain *gain() const { return transform->gain(); }
    DSP::CrossOver *crossOver() const { return transform->crossOver(); }
    DSP::Maximizer *maximizer() const { return transform->maximizer(); }
    DSP::Dynamics *dynamics() const { return transform->dynamics(); }
    DSP::Meter::Spectrum *spectrum(uint32_t band) const { return transform->spectrum(band); }
    DSP::TransformBase *transformBase() const { return transform; }

private:
    DSP::Transform *transform;
};

/// The effect, independent of the plug-in format: the chain, the order of its components, program state, and
/// messages to the editor.
/// Thread  transform: audio. postMessage, requestRefresh, requestActiveUpdate, requestLatencyUpdate: any.
///         Everything else: the host's main thread or the editor's
class Plugin : public DSP::PluginLink {
public:
    enum class EditPhase : uint32_t { begin = 0, value = 1, end = 2 };

    Plugin(const Plugin &) = delete;
    Plugin &operator=(const Plugin &) = delete;

    virtual void initialise() {}
    virtual ~Plugin();
    /// Called after the chain has updated its latency.
    virtual void latencyChanged() {}
    void delayCompensationChanged() override {}
    /// Handles the message `latencyMoved`, in a context where calls to the host are allowed.
    virtual void applyLatency() {}
    virtual uint32_t extraLatency() const { return 0; }
    /// Notifies the host of a gesture on a parameter. `value` is used in the phase EditPhase::value only.
    virtual void notifyParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                                 const DSP::ParameterValue &value) = 0;
    /// The same, with a pointer to the value for each kind. If that of the parameter's kind is null, uses the current
    /// value.
    void notifyParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                         const float *floatValue, const bool *boolValue, const uint32_t *intValue);

    void setEditorWindow(EditorWindow *window);
    void postMessage(uint32_t code) override;
    /// Requests the editor, if it is open, to update its controls. Merges requests until refreshServed.
    void requestRefresh();
    /// The editor calls it before it reads the parameters.
    void refreshServed() { refreshPending.exchange(false, std::memory_order_acq_rel); }
    bool hasEditorWindow() const { return editorWindow.load(std::memory_order_relaxed) != nullptr; }

    void resume(uint32_t rate);
    void suspend();
    bool isActive() const { return active; }
    void setChannelCount(uint32_t inputs, uint32_t outputs);
    void resetChain() override;
    void requestActiveUpdate() override;
    void requestLatencyUpdate() override;
    uint32_t sampleRate() const { return chain->getSampleRate(); } // Hz
    uint32_t latency() const                                       // samples
    {
        return chain->getLatency() + (hostFormat == kOtherFormat ? extraLatency() : 0);
    }
    /// One block; see DSP::TransformBase::process.
    uint32_t transform(uint32_t frames, float *inLeft, float *inRight, float *outLeft, float *outRight);

    void registerComponent(DSP::Component *component) override;
    std::span<DSP::Component *const> componentList() const override { return components; }
    void propagateMeterEnable() override;

    const ParameterTable &parameters() const { return table; }

    /// Reports a phase of a gesture. The control has already set the value.
    void editParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                       const DSP::ParameterValue &value);
    void editParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                       const float *floatValue, const bool *boolValue, const uint32_t *intValue);

    // A program's state: a 12-byte header, then the saved parameters of all components in componentList order.

    using StateImage = std::vector<uint8_t>;
    StateImage captureState() const;
    StateImage captureDefaultState() const;
    bool isValidState(const StateImage &image) const;
    /// Sets all saved parameters and, if `notify` is true, notifies the host of those that change. Settings of
    /// DSP::Global are not part of the state. Returns false without changes if the image is invalid. Any thread
    /// except the audio thread; audio may run meanwhile.
    bool restoreState(const StateImage &image, bool notify);
    /// Like restoreState without notifying the host; then makes the editor reload its controls.
    bool loadState(const StateImage &image);
    /// Like loadState, without the check: the image must have passed isValidState or be a captured one.
    void loadValidState(const StateImage &image);

    static constexpr uint32_t kStateMagic = 111498, kStateVersion = 6, kStateHeader = 12; // bytes

    /// Returns the install folder from the registry (default: the library's folder), with a trailing separator.
    String installPath() const;

    uint32_t getHostFormat() const { return hostFormat; }
    const TransformHandle &transformHandle() const { return *handle; }

    /// Hosts call it with true before they change the program and with false afterwards.
    void setPresetChanging(bool on) { chain->setPresetChanging(on); }
    /// The chain's lock, held during each block.
    Util::NamedLock &getTransformLock() { return chain->getTransformLock(); }

    static constexpr uint32_t kVst = 1, kOtherFormat = 2; // values of hostFormat

protected:
    explicit Plugin(uint32_t hostFormat, uint32_t blockScale = 1);

    std::atomic<EditorWindow *> editorWindow = nullptr;
    Util::RegistryKey registry;
    int64_t streamTime = 0;                   // units of 100 ns
    std::atomic<bool> refreshPending = false; // clear it before reading the parameters
    std::vector<DSP::Component *> components;
    uint32_t stateSize = kStateHeader; // bytes
    Util::NamedLock stateLock;
    Util::Shared<bool> active = false; // between resume and suspend
    const uint32_t hostFormat;
    const uint32_t blockScale;

private:
    void ensureInstallFolder() const;
    /// Calls latencyChanged if the chain has updated its latency.
    void passOnLatency();
    template <class ReadValue>
    StateImage writeState(ReadValue readValue) const;
    void applyState(const StateImage &image, bool notify);

    std::unique_ptr<DSP::Transform> chain;
    std::unique_ptr<TransformHandle> handle;
    ParameterTable table;
};
