#pragma once
#include <optional>
#include <string>
#include <vector>

namespace App {

enum class LimiterMode { bypassed, soft, brickwall };

/// Limiter output at one threshold, before the gain stages after the limiter.
struct LimiterPoint {
    double threshold, loudness, truePeak; // dBFS, LUFS, dBTP
};

/// Limiter output in one mode as a function of the threshold, in ascending order. A bypassed limiter has one point.
struct LimiterCurve {
    LimiterMode mode;
    std::vector<LimiterPoint> points;

    /// Inserts a point, or replaces the one with the same threshold.
    void set(const LimiterPoint &point);
};

/// Rounds a threshold to the resolution of the search.
double gridThreshold(double db);

struct LoudnessGoal {
    double loudness; // LUFS
    double truePeak; // dBTP, the maximum
};

/// Limits of the effect's parameters in dB.
struct GainLimits {
    double leastGain, mostGain, leastMargin;
};

/// Parameter values, rounded to 0.01 dB, and the predicted result.
struct LoudnessChoice {
    LoudnessGoal goal{};
    double gain = 0.0, threshold = 0.0, margin = 0.0; // dB
    LimiterMode mode = LimiterMode::soft;
    LoudnessGoal predicted{}; // its true peak is an upper bound

    /// Gain in dB of all stages together, including the limiter's make-up gain.
    double lift() const { return mode == LimiterMode::bypassed ? gain : gain + margin - threshold; }
    /// The values in the form of the --set option: "Gain=-3.20".
    std::vector<std::string> settings() const;
};

/// Result of a search along one curve: a choice, or the range of loudness within reach in LUFS.
struct LoudnessAttempt {
    std::optional<LoudnessChoice> choice;
    double loudest, softest;
};

/// Finds the gentlest limiting on a curve that reaches the goal: the highest threshold at which the target loudness
/// does not exceed the maximum true peak. The stages after the limiter only scale the signal. "Limiter Margin"
/// provides as much of the lift as its range allows, "Gain" the remainder; at threshold 0 "Gain" comes first.
/// Between two measured thresholds the loudness is interpolated. The true peak is an upper bound: it exceeds the lower
/// point's by at most the difference in threshold and never exceeds the upper point's.
LoudnessAttempt findOn(const LimiterCurve &curve, const LoudnessGoal &goal, const GainLimits &limits);

} // namespace App
