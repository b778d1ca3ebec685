#pragma once
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "host/VSTPlugin.h"
#include "tests/signals/Signals.h"

/// A host that records the effect's calls and returns the answers set by the test. Only one can exist at a time, as the
/// callback has no user pointer.
class FakeHost {
public:
    struct Call {
        int32_t opcode, index;
        intptr_t value;
        float opt;
    };

    FakeHost() { current = this; }
    ~FakeHost() { current = nullptr; }
    FakeHost(FakeHost &&) = delete;

    static intptr_t callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                             float opt)
    {
        return current->answer(effect, opcode, index, value, ptr, opt);
    }

    /// Number of recorded calls with `opcode`.
    int count(int32_t opcode) const;
    /// Returns and clears the recorded calls, except queries of connections.
    std::vector<Call> takeCalls();

    std::map<int32_t, intptr_t> answers = {{audioMasterVersion, 2300}}; // default: 0
    std::string product;
    int32_t connectedInputs = 2, connectedOutputs = 2;
    bool echoesAutomation = false; // sets each automated value again inside the callback, as some hosts do
    std::function<void(int32_t opcode)> onCall; // runs inside each callback

private:
    intptr_t answer(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt);

    static inline FakeHost *current = nullptr;
    std::vector<Call> calls;
};

/// An effect that the test uses through its AEffect record, like a host. The destructor closes it.
class LoadedEffect {
public:
    using Entry = AEffect *(*)(HostCallback);
    using Bytes = std::vector<uint8_t>;

    /// Creates the effect with the entry of a loaded library, or with the linked one.
    explicit LoadedEffect(Entry entry = VSTPluginMain) : effect(entry(FakeHost::callback)) {}
    ~LoadedEffect() { dispatch(effClose); }
    LoadedEffect(LoadedEffect &&) = delete;

    AEffect *operator->() const { return effect; }
    /// Only for an effect from the linked entry.
    VSTPlugin &plugin() const { return *VSTPlugin::of(effect); }
    DSP::Global &global() const { return *plugin().transformHandle().global(); }

    intptr_t dispatch(int32_t opcode, int32_t index = 0, intptr_t value = 0, void *ptr = nullptr,
                      float opt = 0.0f) const
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }
    void switchOn() const { dispatch(effMainsChanged, 0, 1); }
    void switchOff() const { dispatch(effMainsChanged, 0, 0); }
    void set(int32_t index, float value) const { effect->setParameter(effect, index, value); }
    float get(int32_t index) const { return effect->getParameter(effect, index); }
    void setRate(uint32_t rate) const { dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(rate)); }
    /// Processes stereo audio as one block of processReplacing.
    Audio process(Audio in) const;
    /// Sets all parameters at random: cutoffs sorted, most switches off.
    void setAll(Signals::Random &random) const;
    Bytes chunk() const;
    /// Loads a chunk; returns the effect's answer.
    intptr_t load(Bytes chunk) const;
    /// Returns the string that the effect writes, or kUntouched if it writes none.
    std::string text(int32_t opcode, int32_t index = 0) const;

    // Contents of the host's buffers before a call.
    static constexpr char kUntouched[] = "untouched";
    static constexpr float kUntouchedSample = 0.5f;

private:
    AEffect *effect;
};

/// Replaces the editor's window during its lifetime, and records the messages posted to it.
/// Thread: post() any
class RecordingWindow final : public EditorWindow {
public:
    explicit RecordingWindow(VSTPlugin &shown) : plugin(shown) { plugin.setEditorWindow(this); }
    ~RecordingWindow() { plugin.setEditorWindow(nullptr); }
    void post(uint32_t code) override
    {
        const std::lock_guard posting(lock);
        codes.push_back(code);
    }
    std::vector<uint32_t> codes;

private:
    VSTPlugin &plugin;
    std::mutex lock;
};
