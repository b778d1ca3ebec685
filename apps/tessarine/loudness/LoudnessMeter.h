#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include <ebur128.h>

namespace App {

/// Peaks and integrated loudness of a whole signal, after ITU-R BS.1770-4 and EBU R 128. The library weights
/// the signal and measures blocks of 400 ms; its own integration either keeps all of them or rounds each to
/// 0.1 LU, so the blocks are gated here: sums of energy in classes of 0.1 LU need the same memory for any
/// length, and only which blocks of the class at the gate count is rounded.
/// Unit    dB over full scale, LUFS; minus infinity for silence and for less than 400 ms
class LoudnessMeter {
public:
    LoudnessMeter(uint32_t channels, uint32_t rate);

    /// Samples that are no numbers count as silence.
    void add(const float *interleaved, uint32_t frames);

    struct Figures {
        double samplePeakDb, truePeakDb, loudness;
    };
    Figures figures() const;

private:
    struct Destroy {
        void operator()(ebur128_state *used) const { ebur128_destroy(&used); }
    };
    struct Class {
        uint64_t blocks = 0;
        double energy = 0.0;
    };

    void closeBlock();
    /// Mean energy of the classes whose own mean is above the gate; 0 if there are none.
    double meanEnergy(double gate) const;
    double loudness() const;

    std::unique_ptr<ebur128_state, Destroy> state;
    uint32_t hop;        // frames from block to block, 100 ms
    uint32_t untilBlock; // frames
    std::vector<Class> classes;
    std::vector<float> clean;
};

} // namespace App
