#pragma once
#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

#include "host/VSTPlugin.h"
#include "tests/simulation/Journal.h"

/// One effect loaded by the simulated host, with the host's callback. Audio and automation run while the window thread
/// uses the effect, except while it loads the effect or changes the rate or channels.
/// Thread: the audio thread holds `playing`, the automation thread `automating`; everything else on the window thread
class EffectInstance {
public:
    using Bytes = std::vector<uint8_t>;

    explicit EffectInstance(uint32_t index) : number(index) { load(); }
    ~EffectInstance() { unload(); }
    EffectInstance(const EffectInstance &) = delete;

    /// Stops audio and automation during its lifetime.
    using Exclusive = std::scoped_lock<std::mutex, std::mutex>;
    std::mutex playing, automating;

    // Both need Exclusive; record() is null after unload.
    void load();
    void unload();
    AEffect *record() const { return effect; }
    VSTPlugin &plugin() const { return *VSTPlugin::of(effect); }
    intptr_t dispatch(int32_t opcode, int32_t index = 0, intptr_t value = 0, void *ptr = nullptr,
                      float opt = 0.0f) const
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }
    void switchTo(bool on) const { dispatch(effMainsChanged, 0, on); }
    Bytes chunk() const;
    bool setChunk(Bytes chunk, bool isPreset) const;
    /// Loads a possibly damaged chunk. Requires that a refused chunk changes nothing, and that an accepted one leaves a
    /// valid state. Returns true if accepted.
    bool checkChunk(const Bytes &chunk, bool isPreset) const;
    bool hasOpenEditor() const;

    void require(bool holds, const char *what) const { Journal::require(holds, what, number); }
    /// To be called while the user does not touch a control.
    void requireIdle() const;
    void requireFiniteParameters() const;
    void requireShortStrings() const;

    const uint32_t number;
    std::atomic<int32_t> inputs = 2, outputs = 2; // connected channels
    std::function<void()> insideCallbacks;        // runs while the effect reports an edit
    bool echoes = false;                          // the host sets each reported value at once

private:
    static intptr_t callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                             float opt);
    void checkEdit(int32_t opcode, int32_t index, float value);
    std::vector<float> parameters() const;
    bool allGesturesEnded() const;

    AEffect *effect = nullptr;
    std::vector<int> gestures; // open gestures of each parameter
    int callbackDepth = 0;     // nested calls of insideCallbacks
};
