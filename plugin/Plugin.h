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

/// Where messages to the editor's window go. Posting never blocks: the audio thread does it.
class EditorWindow {
public:
    virtual void post(uint32_t code) = 0;

protected:
    ~EditorWindow() = default;
};

/// The components of a plug-in, as the editor and the host shell reach them.
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

/// The effect without a host format: the chain, the order in which everything walks its components, a
/// program's state, and messages to the editor.
/// Thread  transform: audio. postMessage, requestRefresh, the update requests: any. Everything else: the
///         host's main thread or the editor's
class Plugin : public DSP::PluginLink {
public:
    enum class EditPhase : uint32_t { begin = 0, value = 1, end = 2 };

    Plugin(const Plugin &) = delete;
    Plugin &operator=(const Plugin &) = delete;

    virtual void initialise() {}
    virtual ~Plugin();
    /// The chain has computed its latency anew.
    virtual void latencyChanged() {}
    void delayCompensationChanged() override {}
    /// Somebody serves the message `latencyMoved`, where calls of the host are allowed.
    virtual void applyLatency() {}
    virtual uint32_t extraLatency() const { return 0; }
    /// Tells the host of a gesture on a parameter. The value counts in the phase `value` only.
    virtual void notifyParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                                 const DSP::ParameterValue &value) = 0;
    /// The same with the value behind the pointer of its kind, or the present one if that is null.
    void notifyParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                         const float *floatValue, const bool *boolValue, const uint32_t *intValue);

    void setEditorWindow(EditorWindow *window);
    void postMessage(uint32_t code) override;
    /// Asks the window, if there is one, to show the parameters again; requests that it has not served yet
    /// are one.
    void requestRefresh();
    /// To be called before the parameters are read.
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

    /// A control begins, changes or ends a gesture; it has set the value itself.
    void editParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                       const DSP::ParameterValue &value);
    void editParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                       const float *floatValue, const bool *boolValue, const uint32_t *intValue);

    // A program's state: every saved parameter of every component, in their fixed order, behind a header of
    // 12 bytes.

    using StateImage = std::vector<uint8_t>;
    StateImage captureState() const;
    StateImage captureDefaultState() const;
    bool isValidState(const StateImage &image) const;
    /// Sets all saved parameters, with or without telling the host of those that change. False, and nothing
    /// done, for an image that is not valid. Settings of DSP::Global stay. Any thread but the audio thread;
    /// audio may run meanwhile.
    bool restoreState(const StateImage &image, bool notify);
    /// restoreState without telling the host, and has the editor reload its controls.
    bool loadState(const StateImage &image);
    /// loadState of an image that isValidState has accepted or that was captured here.
    void loadValidState(const StateImage &image);

    static constexpr uint32_t kStateMagic = 111498, kStateVersion = 6, kStateHeader = 12; // bytes

    /// Folder named by the registry, or the one of this library; ends in a separator.
    String installPath() const;

    uint32_t getHostFormat() const { return hostFormat; }
    const TransformHandle &transformHandle() const { return *handle; }

    /// A host announces that it exchanges the program, and that it has done so.
    void setPresetChanging(bool on) { chain->setPresetChanging(on); }
    /// The chain's own: held for a whole block.
    Util::NamedLock &getTransformLock() { return chain->getTransformLock(); }

    static constexpr uint32_t kVst = 1, kOtherFormat = 2; // values of hostFormat

protected:
    explicit Plugin(uint32_t hostFormat, uint32_t blockScale = 1);

    std::atomic<EditorWindow *> editorWindow = nullptr;
    Util::RegistryKey registry;
    int64_t streamTime = 0;                   // 100 ns
    std::atomic<bool> refreshPending = false; // who clears it reads all that was set before
    std::vector<DSP::Component *> components;
    uint32_t stateSize = kStateHeader; // bytes
    Util::NamedLock stateLock;
    Util::Shared<bool> active = false; // between resume and suspend
    const uint32_t hostFormat;
    const uint32_t blockScale;

private:
    void ensureInstallFolder() const;
    /// Passes on what the chain left after a call.
    void passOnLatency();
    template <class ReadValue>
    StateImage writeState(ReadValue readValue) const;
    void applyState(const StateImage &image, bool notify);

    std::unique_ptr<DSP::Transform> chain;
    std::unique_ptr<TransformHandle> handle;
    ParameterTable table;
};
