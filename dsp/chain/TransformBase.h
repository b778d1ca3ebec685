#pragma once
#include <atomic>
#include <memory>
#include <span>

#include "PluginBase/Util/Shared.h"
#include "dsp/stages/Global.h"

namespace DSP {

/// The generic part of the chain: settings, lock of a block, global bypass, mono folding, active components
/// and latency. The concrete chain gives `transform`. The chain calls nobody above it: whoever called it asks
/// afterwards for what there is to pass on.
/// Thread  process, takeRefresh: audio. Everything else: the host's main thread, or the editor's; what clears
///         or prepares the chain waits for the block that runs
class TransformBase {
public:
    virtual ~TransformBase() = default;

    /// One block from `in` to `out`, whose samples may not overlap; those of `in` are destroyed. Both are mono
    /// or both are stereo. `time` is that of the first sample, in 100 ns. Returns the frames written.
    uint32_t process(const Block &in, const Block &out, int64_t time);

    /// Prepares for playing at `rate` Hz: clears all audio state.
    void resume(uint32_t rate);
    void suspend();
    void reset();
    /// Carries out pending updates of the active components and of the latency.
    void updateComponents(bool updateActive, bool updateLatency);
    /// Asks for an update of both, or of the latency alone. False if it is not carried out at once: during a
    /// block it waits for the next one, and while a program is exchanged it is ignored.
    bool requestActiveUpdate() { return requestUpdate(true); }
    bool requestLatencyUpdate() { return requestUpdate(false); }
    void setPresetChanging(bool on) { presetChanging = on; }

    /// True once after the latency was computed.
    bool takeLatencyUpdate() { return latencyUpdated.exchange(false); }
    /// True if automation moved a parameter, but at most every 67 ms.
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

    /// Magnitude above which an input sample is taken for garbage: 200 dB over full scale.
    static constexpr float kLoudestSample = 1e10f;

protected:
    explicit TransformBase(PluginLink &plugin) : settings(plugin), derivedSettings(plugin) {}

    virtual void resetState() {}
    virtual void transform(const Now &now, const Block &in, const Block &out) = 0;

    void run(Component &stage, const Now &now, const Block &block)
    {
        if (stage.run(now, block)) uiRefreshPending = true;
    }

    std::span<Component *const> components; // in their fixed order; the concrete chain sets it when all exist

private:
    bool isBypassAutomated() const;
    bool isPlainBypass() const { return settings.getBypass() && !isBypassAutomated(); }
    void followMonoSetting(bool stereo);
    /// Adds the denormal guard, then transforms.
    void transformNoise(const Now &now, const Block &in, const Block &out);
    /// transformNoise or bypassCopy, step by step as the automation of the bypass says.
    void transformAutomated(const Now &now, const Block &in, const Block &out);
    static void bypassCopy(const Block &in, const Block &out);
    bool requestUpdate(bool activeToo);

    Util::NamedLock transformLock{"Plugin::Transforming"};
    Global settings;
    GlobalDerived derivedSettings;
    Util::Shared<uint32_t> inputChannels = 1, outputChannels = 1; // for the editor; audio reads its pointers
    Util::Shared<uint32_t> sampleRate = 44100;                    // Hz
    Util::Shared<bool> presetChanging = false;                    // set by hosts that announce it
    bool monoActive = false;
    Util::Shared<uint32_t> latency = 0; // samples
    // Who raises a flag has changed something before; who clears it looks at everything after.
    std::atomic<bool> activeUpdatePending = true, latencyUpdatePending = true;
    std::atomic<bool> latencyUpdated = false;
    std::atomic<bool> inProcess = false; // a block runs, and carries out updates at its next
    uint8_t inputGuardPhase = 0;
    bool uiRefreshPending = false; // automation moved a parameter
    uint32_t lastRefreshTick = 0;  // ms
    Util::Shared<uint64_t> refused = 0;
};

} // namespace DSP
