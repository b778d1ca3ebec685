#pragma once
#include <filesystem>
#include <vector>

#include "apps/tessarine/effect/EffectPass.h"
#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/files/Excerpt.h"
#include "apps/tessarine/loudness/LimiterTrial.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"

namespace App {

/// Finds the gentlest limiting that reaches a loudness goal: a bypassed limiter, else soft mode, else brickwall mode.
/// Stops at the first mode that reaches the goal. Each pass reads the file once, computes the sum of the bands once and
/// measures several thresholds on it, in parallel on all processors.
/// A "Limiter Bypass" or "Limiter Brickwall Mode" in the settings restricts the modes.
/// Errors  Failure if the settings contain a parameter that the search chooses, if the goal is out of reach, or if the
///         loudness cannot be measured; Interrupted
class LoudnessSearch {
public:
    LoudnessSearch(std::filesystem::path in, const Excerpt &excerpt, EffectSetup setup, bool compensate,
                   const LoudnessGoal &goal);

    /// Measures until a choice is found.
    LoudnessChoice choose();
    /// Adds the measured result of a choice. correct() then returns a better one, or nullopt if none is found.
    void learn(const LoudnessChoice &choice, double loudness, double truePeak);
    std::optional<LoudnessChoice> correct();

private:
    LimiterCurve &curveOf(LimiterMode mode);
    /// Thresholds to measure next, below those measured so far; empty at the end of the range.
    std::vector<double> nextThresholds(const LimiterCurve &curve) const;
    void measure(LimiterCurve &curve, const std::vector<double> &thresholds);
    std::string refusal(double loudest, double softest) const;

    const std::filesystem::path in;
    const Excerpt excerpt;
    EffectSetup setup;
    const bool compensate;
    const LoudnessGoal goal;
    GainLimits limits{};
    double leastThreshold = 0.0; // dBFS
    std::vector<LimiterMode> modes;
    std::vector<LimiterCurve> curves;
};

} // namespace App
