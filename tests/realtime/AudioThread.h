#pragma once
#include <atomic>

#include "tests/realtime/PlayedEffect.h"
#include "tests/realtime/Watch.h"

/// What audio threads have done in their steady state.
struct Figures {
    Watch::Counts counts;
    Watch::Way way = Watch::Way::none;
    bool controlsFound = true; // by each of the threads
    uint64_t threads = 0, blocks = 0, frames = 0, valuesSet = 0;
    uint64_t bypassedBlocks = 0; // went past the chain
    uint64_t waitingBlocks = 0;  // met a lock that another thread had
};

/// Plays until told to stop, block after block without a pause, so that threads meet far more often than in a
/// host, and watches itself while the effect is at work.
///
/// The steady state begins when the effect has played kWarmBlocks of the largest size since it was told the
/// format; from there on nothing is left out, whatever is set meanwhile by whom.
class AudioThread {
public:
    static constexpr int kWarmBlocks = 2;

    AudioThread(PlayedEffect &played, uint64_t seed, Figures &sum)
        : effect(played), random(seed), figures(sum)
    {
    }
    /// The body of a thread of its own.
    void run(class Controls &controls, const std::atomic<bool> &stopping, bool filterOnly);
    /// Until then nobody may bypass or pause the effect.
    bool isWarm() const { return warm; }

private:
    void playWatched(int32_t frames);
    void play(int32_t frames, bool adds);

    PlayedEffect &effect;
    Signals::Random random;
    Figures &figures;
    std::atomic<bool> warm = false;
    float channels[4][PlayedEffect::kMostFrames];
};
