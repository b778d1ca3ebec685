#pragma once
#include <algorithm>

#include "dsp/numerics/Math.h"

/// From parameters in the user's units to the 32-bit factors that block code reads. Values inside the
/// parameters' ranges convert exactly; a host may store any finite value, and the result stays finite;
/// NaN counts as the limit.
namespace DSP {

/// 120 dB: far above any range, and a product of a chain of these is still a number.
inline constexpr float kLargestGain = 1e6f;
/// Keeps a division by a threshold finite.
inline constexpr float kSmallestThreshold = 1e-30f;

inline float gainFactor(float db)
{
    return std::min(kLargestGain, static_cast<float>(Math::decibelsToLinear(db)));
}

inline float thresholdFactor(float db)
{
    return std::max(kSmallestThreshold, static_cast<float>(Math::decibelsToLinear(db)));
}

/// Decay per sample of the peak detectors: to 3 % in 50 ms.
inline float peakDecay(uint32_t sampleRateHz)
{
    return static_cast<float>(Math::pow(0.03f, 1.0 / (sampleRateHz * 0.05)));
}

} // namespace DSP
