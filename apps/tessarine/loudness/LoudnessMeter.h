#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include <ebur128.h>

namespace App {

/// Peaks and integrated loudness of a whole signal according to ITU-R BS.1770-4 and EBU R 128. libebur128
/// weights the signal and measures blocks of 400 ms. Its integration either stores every block or rounds each
/// block to 0.1 LU, so this class gates the blocks itself. It sums their energy in classes of 0.1 LU; this
/// needs constant memory and rounds only the gates.
/// Unit    dBFS, dBTP and LUFS; minus infinity for silence and for less than 400 ms
class LoudnessMeter {
public:
    LoudnessMeter(uint32_t channels, uint32_t rate);

    /// Counts NaN and infinite samples as silence.
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
    /// Mean energy of the classes whose mean energy is above `gate`; 0 if there are none.
    double meanEnergy(double gate) const;
    double loudness() const;

    std::unique_ptr<ebur128_state, Destroy> state;
    uint32_t hop;        // frames between block starts, 100 ms
    uint32_t untilBlock; // frames until the current block is complete
    std::vector<Class> classes;
    std::vector<float> clean;
};

} // namespace App
