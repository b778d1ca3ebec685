#pragma once
#include <cstdint>
#include <vector>

namespace App {

/// Sample peak and true peak of a whole signal. Oversamples to at least 192 kHz with a windowed sinc, as ITU-R
/// BS.1770-4, annex 2 requires; the filter is that of libebur128. Interpolates only pieces whose true peak can exceed
/// the maximum so far: the interpolated samples are at most the sample peak times the sum of the taps' magnitudes.
/// Unit    linear
class TruePeakMeter {
public:
    /// `channels` is 1 or 2, `rate` in Hz.
    TruePeakMeter(uint32_t channels, uint32_t rate);

    /// The samples must be finite.
    void add(const float *interleaved, uint32_t frames);
    double samplePeak();
    double truePeak();

private:
    static constexpr uint32_t kPiece = 32; // frames; the history covers all taps of a phase

    /// Measures the frames added since the last complete piece.
    void measurePiece();

    const uint32_t channels;
    std::vector<std::vector<float>> phases; // taps for each position between two samples
    float bound = 1.0f;                     // largest sum of the magnitudes of a phase's taps
    std::vector<float> window;              // interleaved: the previous piece, then the current one
    std::vector<float> interpolated;
    uint32_t filled = 0; // frames in the current piece
    float previousPeak = 0.0f, piecePeak = 0.0f;
    float highestSample = 0.0f, highest = 0.0f;
};

} // namespace App
