#pragma once
#include <atomic>
#include <vector>

#include "tests/simulation/SimulatedUser.h"

/// An effect in a simulated host, with its editor always open offscreen.
/// Thread: record(), options() and automate() any; everything else the window thread. restart() needs the audio thread
///         stopped
class PlayedEffect final : private EditorWindow {
public:
    struct Format {
        uint32_t rate;    // Hz
        int32_t channels; // 1 or 2
    };
    static constexpr int32_t kMostFrames = 4096;

    PlayedEffect();

    /// Suspends the effect, sets the format and resumes.
    void restart(Format format);
    /// Performs one action of the user or the host, then an editor tick.
    void useWindow(Random &random);
    /// Sets one parameter at random, occasionally all of them.
    void automate(Random &random);
    AEffect *record() const { return effect.record(); }
    DSP::Global &options() const { return *effect.plugin().transformHandle().global(); }

private:
    /// Stores the message for tick(). The offscreen window would allocate memory for it, which the check would report.
    void post(uint32_t code) override { waiting |= 1u << code; }
    void setEnvelopes(Random &random);
    void useState(Random &random);
    void tick();

    SimulatedHost host{1};
    EffectInstance &effect = host.effect(0);
    SimulatedUser user{host};
    std::atomic<uint32_t> waiting = 0; // one bit per message code
    EffectInstance::Bytes saved;       // a chunk
};
