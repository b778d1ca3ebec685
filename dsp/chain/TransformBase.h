#pragma once
#include <atomic>
#include <memory>
#include <vector>

#include "PluginBase/Util/AlignedBuffer.h"
#include "PluginBase/Util/Shared.h"
#include "dsp/stages/Global.h"

namespace DSP {

class PluginLink;

/// The generic part of the chain: settings, locks of a block, global bypass, mono folding, active components
/// and latency. The concrete chain gives `transform`.
/// Thread  process: audio. Everything else: the host's main thread, or the editor's; what clears or prepares
///         the chain waits for the block that runs
class TransformBase {
public:
    virtual ~TransformBase() = default;

    /// One block from `in` to `out`, which may not overlap; the input is destroyed. Right channels are null
    /// for mono. Returns the frames written.
    uint32_t process(uint32_t frames, float *inLeft, float *inRight, float *outLeft, float *outRight);

    /// Prepares for playing at `rate` Hz: clears all audio state.
    void resume(uint32_t rate);
    void suspend();
    void reset();
    /// Carries out pending updates of the active components and of the latency.
    void updateComponents(bool updateActive, bool updateLatency);
    void requestActiveUpdate();
    void requestLatencyUpdate();

    Global *global() const { return settings.get(); }
    GlobalDerived *globalDerived() const { return derivedSettings.get(); }
    uint32_t getSampleRate() const { return sampleRate; } // Hz
    uint32_t getLatency() const { return latency; }       // samples
    uint32_t getInputChannels() const { return inputChannels; }
    uint32_t getOutputChannels() const { return outputChannels; }
    void setChannels(uint32_t inputs, uint32_t outputs)
    {
        inputChannels = inputs;
        outputChannels = outputs;
    }
    void setStreamTime(int64_t time) { streamTime = time; } // 100 ns
    /// Input samples replaced by silence so far, as no numbers or beyond any level.
    uint64_t refusedSamples() const { return refused; }

    /// Magnitude above which an input sample is taken for garbage: 200 dB over full scale.
    static constexpr float kLoudestSample = 1e10f;

protected:
    explicit TransformBase(PluginLink &plugin);

    virtual void resetState() {}
    virtual uint32_t transform(uint32_t frames, float *inLeft, float *inRight, float *outLeft,
                               float *outRight, uint32_t zipperSamples) = 0;
    virtual void bypassCopy(uint32_t frames, const float *inLeft, const float *inRight, float *outLeft,
                            float *outRight);

    /// The arguments that every component's run takes from the chain.
    uint32_t runComponent(Component &component, uint32_t frames, uint32_t zipperSamples, float *left,
                          float *right, float *const *bandsLeft = nullptr, float *const *bandsRight = nullptr)
    {
        return component.run(sampleRate, &streamTime, zipperSamples, &uiRefreshPending, frames, left, right,
                             false, bandsLeft, bandsRight);
    }

    PluginLink &plugin;

private:
    bool isBypassAutomated() const;
    bool isPlainBypass() const;
    uint32_t transformNoise(uint32_t frames, float *inLeft, float *inRight, float *outLeft, float *outRight,
                            uint32_t zipperSamples);
    /// transformNoise or bypassCopy, step by step as the automation of the bypass says.
    uint32_t transformAutomated(uint32_t frames, float *inLeft, float *inRight, float *outLeft,
                                float *outRight, uint32_t zipperSamples);
    void refreshEditor();
    void requestUpdate(bool activeToo);

    std::unique_ptr<Global> settings;
    std::unique_ptr<GlobalDerived> derivedSettings;
    Util::Shared<uint32_t> inputChannels = 1, outputChannels = 1; // for the editor; audio reads its pointers
    Util::Shared<uint32_t> sampleRate = 44100;                    // Hz
    bool uiRefreshPending = false;                                // automation changed a value
    int64_t streamTime = 0;                                       // of the block's first sample, 100 ns
    std::vector<bool> bypassSteps; // the automation of the bypass in the present block
    bool monoActive = false;
    bool delayCompensation = false;
    Util::Shared<uint32_t> latency = 0; // samples
    // Who raises a flag has changed something before; who clears it looks at everything after.
    std::atomic<bool> activeUpdatePending = true, latencyUpdatePending = true;
    std::atomic<bool> inProcess = false; // a block runs, and carries out updates at its next
    uint8_t inputGuardPhase = 0;
    uint32_t lastRefreshTick = 0; // ms
    Util::Shared<uint64_t> refused = 0;
};

} // namespace DSP
