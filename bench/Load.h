#pragma once
#include "apps/tessarine/effect/EffectHost.h"
#include "tests/signals/Signals.h"

namespace Bench {

constexpr uint32_t kRate = 44100; // Hz

/// Frames of one measurement: 32 hops of the spectra, so that every measurement has the same work, and a
/// multiple of every block size in the report.
constexpr uint32_t kMeasuredFrames = 32 * 2048;
constexpr uint32_t kMinuteFrames = 41 * kMeasuredFrames; // slightly more than a minute

/// Applies the standard load, which all figures use: all four bands compress (-30 dB, 4:1, 10 and 100 ms, 12
/// dB of gain), the limiter's threshold is -6 dB, the spectra run. Cutoffs are 120, 1000 and 6000 Hz.
void setStandard(const TransformHandle &chain, bool brickwall);

/// Seeded music that keeps all bands and the limiter active, in pieces of kMeasuredFrames. Longer music
/// starts with the same samples as shorter music.
Audio music(uint32_t frames);

/// Mean gain reduction in dB over all meter readings, and the share of readings above 0.5 dB (0 to 1).
struct Reductions {
    double meanDb = 0, share = 0;
};

/// The whole effect under the standard load, called through its AEffect record as by a host.
class Load {
public:
    /// Loops `musicFrames` of music, a multiple of kMeasuredFrames.
    Load(uint32_t blockFrames, bool brickwall, uint32_t musicFrames);

    /// Processes the next block of the music, or a block of silence.
    void playBlock();
    /// Processes at least `frames`, in whole blocks, and reads the meters 30 times a second.
    void play(uint32_t frames);
    /// Reads all meters like an editor: does nothing until 1/30 s after the last reading.
    void lookAtMeters();
    /// Toggles the middle cutoff between 1000 and 1100 Hz, as a host's automation does.
    void moveCutoff();
    void setSilent(bool on) { silent = on; }

    /// Gain reductions of the four bands and the limiter so far.
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
