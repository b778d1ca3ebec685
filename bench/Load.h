#pragma once
#include "apps/tessarine/effect/EffectHost.h"
#include "tests/signals/Signals.h"

namespace Bench {

constexpr uint32_t kRate = 44100; // Hz

/// The length of one measurement: 32 hops of the spectra, so that every one holds the same work, and a whole
/// number of blocks of every size up to 4096.
constexpr uint32_t kMeasuredFrames = 32 * 2048;
constexpr uint32_t kMinuteFrames = 41 * kMeasuredFrames; // and a little

/// What every figure is measured under: all four bands compress (-30 dB, 4:1, 10 and 100 ms, 12 dB of gain),
/// the limiter works at -6 dB, the spectra run. Bands are split at 120, 1000 and 6000 Hz.
void setStandard(const TransformHandle &chain, bool brickwall);

/// Seeded music that keeps all bands and the limiter working, in pieces of kMeasuredFrames; longer music
/// starts with the shorter.
Audio music(uint32_t frames);

/// How far the gains go down, in dB as a mean over the looks at the meters, and the share of looks with more
/// than half a dB.
struct Reductions {
    double meanDb = 0, share = 0;
};

/// The whole effect under the standard load, called through its record as a host calls it.
class Load {
public:
    /// Plays `musicFrames` of music, over and over: a multiple of kMeasuredFrames.
    Load(uint32_t blockFrames, bool brickwall, uint32_t musicFrames);

    /// The next block of the music, or of silence.
    void playBlock();
    /// Whole blocks that hold `frames` or more; looks at the meters on the way.
    void play(uint32_t frames);
    /// Reads all meters, as an editor does 30 times a second, if it is time to.
    void lookAtMeters();
    /// Moves the middle cutoff, each time to another place, as a host's automation does.
    void moveCutoff();
    void setSilent(bool on) { silent = on; }

    /// Of the four bands and the limiter, over all looks at the meters so far.
    std::vector<Reductions> reductions() const;

private:
    static constexpr uint32_t kLookInterval = kRate / 30; // frames

    const uint32_t block;
    App::EffectHost host;
    Audio sound, output, silence;
    bool silent = false, cutoffIsHigh = false;
    uint32_t position = 0, sinceLook = 0;
    std::vector<Reductions> sums{5};
    uint32_t looks = 0;
    std::vector<float> spectrum;
};

} // namespace Bench
