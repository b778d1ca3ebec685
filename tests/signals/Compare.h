#pragma once
#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <span>

#include "tests/signals/Signals.h"

inline double peakOf(std::span<const float> samples)
{
    double peak = 0;
    for (float sample : samples)
        peak = std::isfinite(sample) ? std::max(peak, std::fabs(static_cast<double>(sample)))
                                     : std::numeric_limits<double>::infinity();
    return peak;
}

inline double peakOf(const Audio &audio) { return std::max(peakOf(audio.left), peakOf(audio.right)); }

/// Largest absolute difference; infinite if the lengths differ or a sample is NaN.
inline double differenceOf(std::span<const float> a, std::span<const float> b)
{
    if (a.size() != b.size()) return std::numeric_limits<double>::infinity();
    double most = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        const double difference = std::fabs(static_cast<double>(a[i]) - b[i]);
        if (!(difference <= most)) most = std::isnan(difference) ? HUGE_VAL : difference;
    }
    return most;
}

inline double differenceOf(const Audio &a, const Audio &b)
{
    return std::max(differenceOf(a.left, b.left), differenceOf(a.right, b.right));
}

inline double toDb(double linear) { return 20 * std::log10(std::max(linear, 1e-30)); }

/// Largest error of `actual` in dB relative to the highest of full scale, `inputPeak` and the peak of `expected`.
inline double errorDb(const Audio &actual, const Audio &expected, double inputPeak = 0)
{
    return toDb(differenceOf(actual, expected) / std::max({1.0, inputPeak, peakOf(expected)}));
}

/// Prints audio in GoogleTest's failure messages.
inline void PrintTo(const Audio &audio, std::ostream *out)
{
    *out << audio.frames() << (audio.stereo() ? " stereo" : " mono") << " frames, peak " << peakOf(audio)
         << ", first";
    for (uint32_t i = 0; i < std::min(audio.frames(), 4u); ++i) *out << ' ' << audio.left[i];
}
