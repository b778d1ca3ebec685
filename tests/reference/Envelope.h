#pragma once
#include <cmath>
#include <cstdint>
#include <vector>

namespace Reference {

struct Segment {
    int64_t start, end; // in units of 100 ns
    float from, to;
    uint32_t curve; // 1: step, 4: accelerating, 8: decelerating, otherwise linear
};

/// Computes the parameter value of each sample from time 0. Segments must be sorted by start; a later segment overwrites
/// earlier ones.
inline std::vector<float> playEnvelope(const std::vector<Segment> &segments, uint32_t rate, uint32_t frames,
                                       float initial)
{
    std::vector<float> values(frames, initial);
    const auto sampleAt = [rate](int64_t time) {
        return static_cast<int64_t>(std::floor(static_cast<double>(time) * rate / 1e7 + 0.5));
    };
    for (const Segment &s : segments) {
        const int64_t start = sampleAt(s.start), length = sampleAt(s.end) - start;
        if (length <= 0) continue;
        const double rise = static_cast<double>(s.to) - s.from;
        // linear: constant increment; accelerating: it grows from 0; decelerating: it shrinks to 0
        const double most = length > 1 ? 2 * rise / static_cast<double>(length) : 0;
        const double change = length > 1 ? most / static_cast<double>(length - 1) : 0;
        double increment = rise / static_cast<double>(length), growth = 0, value = s.from;
        if (s.curve == 1) increment = 0;
        if (s.curve == 4) increment = 0, growth = change;
        if (s.curve == 8) increment = most, growth = -change;
        for (int64_t i = 0; start + i < frames; ++i) {
            if (start + i >= 0)
                values[static_cast<size_t>(start + i)] = i < length ? static_cast<float>(value) : s.to;
            value += increment;
            increment += growth;
        }
    }
    return values;
}

} // namespace Reference
