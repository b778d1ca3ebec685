#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include <ebur128.h>

namespace App {

/// Peaks and integrated loudness of a whole signal, after ITU-R BS.1770-4 and EBU R 128. The library keeps the energy
/// of every 400 ms block, about 1 MB per hour. Its histogram needs constant memory, but rounds blocks to 0.1 LU: music
/// then reads up to 0.01 LU wrong, a steady tone up to 0.05 LU.
/// Unit    dB over full scale, LUFS; minus infinity for silence and for less than 400 ms
class LoudnessMeter {
public:
    LoudnessMeter(uint32_t channels, uint32_t rate);

    /// Non-finite samples count as silence.
    void add(const float *interleaved, uint32_t frames);

    struct Figures {
        double samplePeakDb, truePeakDb, loudness;
    };
    Figures figures() const;

private:
    struct Destroy {
        void operator()(ebur128_state *used) const { ebur128_destroy(&used); }
    };
    std::unique_ptr<ebur128_state, Destroy> state;
    std::vector<float> clean;
};

} // namespace App
