#pragma once
#include <string>
#include <vector>

namespace App {

enum class LimiterMode { bypassed, soft, brickwall };

/// Limiter output at one threshold, before the gain stages after the limiter.
struct LimiterPoint {
    double threshold, loudness, truePeak; // dBFS, LUFS, dBTP
};

/// Limiter output in one mode as a function of the threshold, in ascending order up to 0 dBFS. A bypassed
/// limiter has one point.
struct LimiterCurve {
    LimiterMode mode;
    std::vector<LimiterPoint> points;
};

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

    /// The values in the form of the --set option: "Gain=-3.20".
    std::vector<std::string> settings() const;
};

/// Chooses the gentlest limiting that reaches the goal: in the first mode that can, the highest threshold at
/// which the target loudness does not exceed the maximum true peak. The stages after the limiter only scale
/// the signal. "Limiter Margin" provides as much of the lift as its range allows, "Gain" the remainder; at
/// threshold 0 (no limiting) "Gain" comes first.
/// Between two measured thresholds the loudness is interpolated. The true peak is an upper bound: it exceeds
/// the lower point's by at most the difference in threshold and never exceeds the upper point's.
/// Errors  Failure with the nearest loudness within reach
LoudnessChoice choose(const LoudnessGoal &goal, const GainLimits &limits,
                      const std::vector<LimiterCurve> &curves);

} // namespace App
