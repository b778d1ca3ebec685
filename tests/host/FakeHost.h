#pragma once
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "host/VSTPlugin.h"
#include "tests/signals/Signals.h"

/// A host that writes down what the effect asks and answers as the test says. The callback carries no pointer
/// of ours, so one host at a time exists.
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

    /// How often the effect has asked for that.
    int count(int32_t opcode) const;
    /// What it has asked for since the last call of this, without the questions about connections.
    std::vector<Call> takeCalls();

    std::map<int32_t, intptr_t> answers = {{audioMasterVersion, 2300}}; // everything else: 0
    std::string product;
    int32_t connectedInputs = 2, connectedOutputs = 2;
    bool echoesAutomation = false;              // sets each automated value at once, as some hosts do
    std::function<void(int32_t opcode)> onCall; // what the host does while the effect waits for its answer

private:
    intptr_t answer(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt);

    static inline FakeHost *current = nullptr;
    std::vector<Call> calls;
};

/// The effect as a host has it: reached through its record only, but for plugin(). Closed at the end.
class LoadedEffect {
public:
    using Entry = AEffect *(*)(HostCallback);
    using Bytes = std::vector<uint8_t>;

    /// By the entry of a library, or linked in.
    explicit LoadedEffect(Entry entry = VSTPluginMain) : effect(entry(FakeHost::callback)) {}
    ~LoadedEffect() { dispatch(effClose); }
    LoadedEffect(LoadedEffect &&) = delete;

    AEffect *operator->() const { return effect; }
    /// Of an effect that is linked in.
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
    /// The stereo sound as one block of processReplacing.
    Audio process(Audio in) const;
    /// All parameters by chance: cutoffs in order, most switches off.
    void setAll(Signals::Random &random) const;
    Bytes chunk() const;
    /// Bytes that the effect took.
    intptr_t load(Bytes chunk) const;
    /// What the effect writes for a question; the marker shows that it wrote nothing.
    std::string text(int32_t opcode, int32_t index = 0) const;

    // What stands in the host's buffers before a call.
    static constexpr char kUntouched[] = "untouched";
    static constexpr float kUntouchedSample = 0.5f;

private:
    AEffect *effect;
};

/// Stands for the editor's window, to its end, and writes down what it is told by any thread.
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
