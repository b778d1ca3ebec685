#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include <ebur128.h>

namespace App {

/// Peaks and loudness of a whole signal, after ITU-R BS.1770 and EBU R 128. Its memory does not grow with the
/// length: the loudness of the blocks is kept as a histogram, in steps of 0.1 LU.
/// Unit    dB over full scale, LUFS; minus infinity for silence
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
        void operator()(ebur128_state *state) const { ebur128_destroy(&state); }
    };
    std::unique_ptr<ebur128_state, Destroy> state;
    std::vector<float> clean;
};

} // namespace App
