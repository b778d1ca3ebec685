#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include <ebur128.h>

namespace App {

/// Peaks and integrated loudness of a whole signal according to ITU-R BS.1770-4 and EBU R 128. libebur128 stores
/// the energy of every 400 ms block, about 1 MB per hour. Its histogram mode needs constant memory but rounds blocks
/// to 0.1 LU, an error of up to 0.01 LU with music and 0.05 LU with a steady tone.
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
    std::unique_ptr<ebur128_state, Destroy> state;
    std::vector<float> clean;
};

} // namespace App
