#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include <ebur128.h>

#include "apps/tessarine/loudness/TruePeakMeter.h"

namespace App {

/// Peaks and loudness of a whole signal according to ITU-R BS.1770-4 and EBU R 128. libebur128 weights the signal and
/// gates its integrated loudness. It stores the energy of every 400 ms block, about 1 MB per hour. Its histogram mode
/// needs constant memory but rounds blocks to 0.1 LU, an error of up to 0.01 LU with music and 0.05 LU with a steady
/// tone.
class LoudnessMeter {
public:
    enum class Scope { integrated, full }; // full: also the loudness range and the maximum loudness

    LoudnessMeter(uint32_t channels, uint32_t rate, Scope scope);

    /// The samples must be finite.
    void add(const float *interleaved, uint32_t frames);

    /// In dBFS, dBTP, LUFS and LU. Loudness is minus infinity for silence and for signals shorter than its window.
    struct Figures {
        double samplePeakDb, truePeakDb, loudness;
        double range, maxMomentary, maxShortTerm; // with Scope::full only
    };
    Figures figures();

private:
    void addWeighted(const float *interleaved, uint32_t frames);
    /// Stores the energy of the latest 100 ms.
    void closeHop();
    /// Mean energies of all windows of `hops` hops.
    std::vector<double> slidingMeans(size_t hops) const;

    struct Destroy {
        void operator()(ebur128_state *used) const { ebur128_destroy(&used); }
    };
    const Scope scope;
    const uint32_t hop; // frames
    std::unique_ptr<ebur128_state, Destroy> state;
    TruePeakMeter peaks;
    uint32_t inHop = 0;
    std::vector<double> hopEnergies;
};

} // namespace App
