#pragma once
#include <atomic>

#include "tests/realtime/PlayedEffect.h"
#include "tests/realtime/Report.h"

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
    void playWatched(uint32_t frames);
    void play(Audio &sound, bool adds);

    PlayedEffect &effect;
    Random random;
    Figures &figures;
    std::atomic<bool> warm = false;
    float left[PlayedEffect::kMostFrames] = {}, right[PlayedEffect::kMostFrames] = {};
};
