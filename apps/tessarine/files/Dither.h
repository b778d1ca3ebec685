#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace App {

/// Rounds samples to steps with TPDF dither of two steps peak to peak, so that the error is noise of constant level
/// (Lipshitz, Wannamaker and Vanderkooy, "Quantization and Dither: A Theoretical Survey", 1992). Samples that already are
/// whole steps stay unchanged: no bits are lost, and silence and unprocessed audio remain bit-exact.
/// The noise is the same in every run and independent in each channel.
class Dither {
public:
    explicit Dither(bool on);

    /// Rounds samples * scale; the result is in rounded().
    void round(const float *samples, double scale, size_t count);
    const std::vector<double> &rounded() const { return values; }

private:
    static constexpr size_t kLanes = 8; // even, so that no channel shares a generator

    const bool on;
    std::array<uint32_t, kLanes> state{}; // of the random generators
    size_t lane = 0;                      // generator for the next sample
    std::vector<double> values;
};

} // namespace App
