#pragma once
#include <algorithm>

#include "dsp/numerics/Math.h"

/// Conversions from parameter values to 32-bit linear factors. Values inside the parameters' ranges are not limited.
/// Because a host may store other values, the result is limited to stay finite; NaN counts as the limit.
namespace DSP {

/// 120 dB: above every parameter's range, and low enough that the product of all stages' gains stays finite.
inline constexpr float kLargestGain = 1e6f;
/// Keeps divisions by a threshold finite.
inline constexpr float kSmallestThreshold = 1e-30f;

inline float gainFactor(float db)
{
    return std::min(kLargestGain, static_cast<float>(Math::decibelsToLinear(db)));
}

inline float thresholdFactor(float db)
{
    return std::max(kSmallestThreshold, static_cast<float>(Math::decibelsToLinear(db)));
}

/// Decay factor of the peak detectors per sample: to 3 % in 50 ms.
inline float peakDecay(uint32_t sampleRateHz)
{
    return static_cast<float>(Math::pow(0.03f, 1.0 / (sampleRateHz * 0.05)));
}

} // namespace DSP
