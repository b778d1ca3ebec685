#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace Reference {

/// One channel of a peak meter with peak hold.
struct LevelChannel {
    float peak = 0, held = 0;
    uint32_t holdCount = 0;

    void measure(float sample)
    {
        peak = std::max(peak, std::fabs(sample)); // ignores NaN
        if (peak > held) {
            held = peak;
            holdCount = 0;
        } else if (++holdCount > 17640) {
            held = 0;
            holdCount = 0;
        }
    }
};

struct Level {
    LevelChannel channels[2];

    /// `right` is null for mono.
    void measure(uint32_t frames, const float *left, const float *right)
    {
        for (uint32_t i = 0; i < frames; ++i) channels[0].measure(left[i]);
        for (uint32_t i = 0; right && i < frames; ++i) channels[1].measure(right[i]);
        if (!right) channels[1] = channels[0];
    }
    /// Returns the peak and the held peak; resets the peak.
    std::pair<float, float> read(int channel)
    {
        return {std::exchange(channels[channel].peak, 0.0f), channels[channel].held};
    }
    void reset() { *this = {}; }
};

} // namespace Reference
