#pragma once
#include <string>
#include <vector>

namespace App {

enum class LimiterMode { bypassed, soft, brickwall };

/// What comes out of the limiter at one threshold, before the gains behind it.
struct LimiterPoint {
    double threshold, loudness, truePeak; // dBFS, LUFS, dBTP
};

/// The limiter in one mode over its thresholds, rising to 0; a bypassed one has a single point.
struct LimiterCurve {
    LimiterMode mode;
    std::vector<LimiterPoint> points;
};

struct LoudnessGoal {
    double loudness; // LUFS
    double truePeak; // dBTP, at most
};

/// Ends of the effect's parameters in dB.
struct GainLimits {
    double leastGain, mostGain, leastMargin;
};

/// Values in hundredths of a dB, and what is to be expected of them.
struct LoudnessChoice {
    LoudnessGoal goal{};
    double gain = 0.0, threshold = 0.0, margin = 0.0; // dB
    LimiterMode mode = LimiterMode::soft;
    LoudnessGoal predicted{}; // its true peak is a bound, no estimate

    /// As the command line takes them: "Gain=-3.20".
    std::vector<std::string> settings() const;
};

/// Behind the limiter stand only factors, so all that costs sound is the threshold: the highest one, of the
/// first mode, at which the wanted loudness stays below the wanted peak. "Limiter Margin" then lifts as far
/// as it goes and "Gain" does the rest; without limiting (threshold 0) it is the other way round.
/// Between two measured thresholds the true peak grows by no more than the threshold and not beyond the upper
/// one's, as every gain of the limiter does; the loudness is interpolated.
/// Errors  Failure with the loudness that can be reached
LoudnessChoice choose(const LoudnessGoal &goal, const GainLimits &limits,
                      const std::vector<LimiterCurve> &curves);

} // namespace App
