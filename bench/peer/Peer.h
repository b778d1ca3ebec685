#pragma once
#include "bench/peer/Lv2Effect.h"
#include "tests/signals/Signals.h"

namespace Bench {

/// The nearest open effects of the same work, Calf's multiband compressor with filters of 4th order and its
/// limiter, set like the standard load and fed the same music.
class Peer {
public:
    Peer(const Lv2World &world, uint32_t blockFrames, uint32_t musicFrames);
    void playBlock();
    /// Whole blocks that hold `frames` or more.
    void play(uint32_t frames);
    /// Least gains that its meters have shown, in dB: four bands and the limiter.
    const std::vector<double> &leastGainsDb() const { return leastDb; }
    void lookAtMeters();

private:
    static Lv2Effect::Settings compressorSettings();

    const uint32_t block;
    Audio sound, between, output;
    Lv2Effect compressor, limiter;
    uint32_t position = 0;
    std::vector<double> leastDb = std::vector<double>(5);
};

} // namespace Bench
