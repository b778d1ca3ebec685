#pragma once
#include <atomic>
#include <memory>
#include <span>

#include "PluginBase/Util/Shared.h"
#include "dsp/stages/Global.h"

namespace DSP {

/// Base class of the chain: settings, the block lock, global bypass, mono mode, active components and latency.
/// Derived classes implement `transform`. The chain does not call higher layers; callers poll takeLatencyUpdate
/// and takeRefresh.
/// Thread  process, takeRefresh: audio. Everything else: the host's main thread or the editor's. resume, suspend
///         and reset wait until the current block ends
class TransformBase {
public:
    virtual ~TransformBase() = default;

    /// Processes one block from `in` to `out`. The buffers must not overlap, and `in` is overwritten. Both are mono
    /// or both stereo. `time` is that of the first sample, in units of 100 ns. Returns the number of frames written.
    uint32_t process(const Block &in, const Block &out, int64_t time);

    /// Prepares for playback at `rate` Hz and clears the audio state.
    void resume(uint32_t rate);
    void suspend();
    void reset();
    /// Updates which components are active, and the latency.
    void updateComponents(bool updateActive, bool updateLatency);
    /// Requests an update of the active components and the latency, or of the latency only. Returns true if it was
    /// done at once. During a block it is deferred to the next; while the host changes the program it is ignored.
    bool requestActiveUpdate() { return requestUpdate(true); }
    bool requestLatencyUpdate() { return requestUpdate(false); }
    void setPresetChanging(bool on) { presetChanging = on; }

    /// Returns true once after each update of the latency.
    bool takeLatencyUpdate() { return latencyUpdated.exchange(false); }
    /// Returns true if automation changed a parameter, at most every 67 ms.
    bool takeRefresh();

    Global *global() { return &settings; }
    GlobalDerived *globalDerived() { return &derivedSettings; }
    uint32_t getSampleRate() const { return sampleRate; } // Hz
    uint32_t getLatency() const { return latency; }       // samples
    uint32_t getInputChannels() const { return inputChannels; }
    uint32_t getOutputChannels() const { return outputChannels; }
    void setChannels(uint32_t inputs, uint32_t outputs)
    {
        inputChannels = inputs;
        outputChannels = outputs;
    }
    /// Input samples zeroed so far because they were NaN, infinite or absurdly loud.
    uint64_t refusedSamples() const { return refused; }
    /// Held for a whole block.
    Util::NamedLock &getTransformLock() { return transformLock; }

    /// Input samples above this magnitude, 200 dB over full scale, are zeroed.
    static constexpr float kLoudestSample = 1e10f;

protected:
    explicit TransformBase(PluginLink &plugin) : settings(plugin), derivedSettings(plugin) {}

    virtual void resetState() {}
    virtual void transform(const Now &now, const Block &in, const Block &out) = 0;

    void run(Component &stage, const Now &now, const Block &block)
    {
        if (stage.run(now, block)) uiRefreshPending = true;
    }

    std::span<Component *const> components; // in PluginLink's order; set by the derived constructor

private:
    bool isBypassAutomated() const;
    bool isPlainBypass() const { return settings.getBypass() && !isBypassAutomated(); }
    void followMonoSetting(bool stereo);
    /// Adds the denormal guard, then transforms.
    void transformNoise(const Now &now, const Block &in, const Block &out);
    /// Follows the automation of the bypass in steps: calls transformNoise or bypassCopy for each.
    void transformAutomated(const Now &now, const Block &in, const Block &out);
    static void bypassCopy(const Block &in, const Block &out);
    bool requestUpdate(bool activeToo);

    Util::NamedLock transformLock{"Plugin::Transforming"};
    Global settings;
    GlobalDerived derivedSettings;
    Util::Shared<uint32_t> inputChannels = 1, outputChannels = 1; // shown by the editor; process ignores them
    Util::Shared<uint32_t> sampleRate = 44100;                    // Hz
    Util::Shared<bool> presetChanging = false;                    // only some hosts announce a program change
    bool monoActive = false;
    Util::Shared<uint32_t> latency = 0; // samples
    // Writers change the data before they set a flag; readers clear the flag before they read the data.
    std::atomic<bool> activeUpdatePending = true, latencyUpdatePending = true;
    std::atomic<bool> latencyUpdated = false;
    std::atomic<bool> inProcess = false; // the audio thread is processing; defer updates to its next block
    uint8_t inputGuardPhase = 0;
    bool uiRefreshPending = false; // automation changed a parameter
    uint32_t lastRefreshTick = 0;  // ms
    Util::Shared<uint64_t> refused = 0;
};

} // namespace DSP
