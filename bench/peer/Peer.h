#pragma once
#include "bench/peer/Lv2Effect.h"
#include "tests/signals/Signals.h"

namespace Bench {

/// The nearest open-source equivalent: Calf's multiband compressor (4th-order filters) and limiter, with the
/// settings and the music of the standard load.
class Peer {
public:
    Peer(const Lv2World &world, uint32_t blockFrames, uint32_t musicFrames);
    void playBlock();
    /// Processes at least `frames`, in whole blocks.
    void play(uint32_t frames);
    /// Lowest gains that the meters have shown, in dB: four bands and the limiter.
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
