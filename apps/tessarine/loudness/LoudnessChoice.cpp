#include "apps/tessarine/loudness/LoudnessChoice.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <optional>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace {

constexpr int kStepsPerDb = 20; // resolution of the threshold search
/// An inter-sample peak is interpolated from several samples with slightly different gains.
constexpr double kPeakTolerance = 0.03; // dB

double slope(const LimiterPoint &a, const LimiterPoint &b)
{
    return (b.loudness - a.loudness) / (b.threshold - a.threshold);
}

/// Interpolates the loudness between points[upper - 1] and points[upper]. The higher the threshold, the less
/// the loudness depends on it, so the curve is concave: it lies above the chord of the interval and below the
/// extended chords of both neighbouring intervals. A parabola would lie at a quarter of that distance.
double loudnessBetween(const std::vector<LimiterPoint> &points, size_t upper, double threshold)
{
    constexpr double kParabola = 0.25;
    const LimiterPoint &a = points[upper - 1], &b = points[upper];
    const double chord = a.loudness + slope(a, b) * (threshold - a.threshold);
    double ceiling = b.loudness;
    if (upper >= 2)
        ceiling = std::min(ceiling, a.loudness + slope(points[upper - 2], a) * (threshold - a.threshold));
    if (upper + 1 < points.size())
        ceiling = std::min(ceiling, b.loudness - slope(b, points[upper + 1]) * (b.threshold - threshold));
    return chord + kParabola * std::max(0.0, ceiling - chord);
}

LimiterPoint pointAt(const std::vector<LimiterPoint> &points, double threshold)
{
    const auto upper =
        std::lower_bound(points.begin(), points.end(), threshold,
                         [](const LimiterPoint &point, double wanted) { return point.threshold < wanted; });
    if (upper == points.begin() || upper->threshold == threshold) return *upper;
    const LimiterPoint &lower = *(upper - 1);
    return {threshold, loudnessBetween(points, static_cast<size_t>(upper - points.begin()), threshold),
            std::min(upper->truePeak, lower.truePeak + threshold - lower.threshold) + kPeakTolerance};
}

/// Rounds down, so that rounding never raises a peak above its limit.
double wholeHundredths(double db) { return std::floor(db * 100.0 + 1e-6) / 100.0; }

/// Distributes `lift` dB after the limiter between gain and margin, within their ranges.
LoudnessChoice share(LimiterMode mode, double threshold, double lift, const GainLimits &limits)
{
    LoudnessChoice choice;
    choice.mode = mode;
    choice.threshold = threshold;
    const double sum = lift + threshold; // margin plus gain; the limiter itself lifts by -threshold
    if (mode != LimiterMode::bypassed) {
        const double ofMargin = threshold < 0.0 ? sum : sum - std::max(sum, limits.leastGain);
        choice.margin = std::clamp(ofMargin, limits.leastMargin, 0.0);
    }
    choice.gain = std::clamp(wholeHundredths(sum - choice.margin + 1e-9), limits.leastGain, limits.mostGain);
    return choice;
}

/// The choice at one threshold that comes nearest to a lift of `lift` dB.
LoudnessChoice lifted(const LoudnessGoal &goal, const GainLimits &limits, LimiterMode mode,
                      const LimiterPoint &point, double lift)
{
    LoudnessChoice choice = share(mode, point.threshold, wholeHundredths(lift), limits);
    choice.goal = goal;
    const double done = choice.gain + choice.margin - choice.threshold;
    choice.predicted = {point.loudness + done, point.truePeak + done};
    return choice;
}

/// Result of the search along one curve: a choice, or the range of loudness within reach.
struct Attempt {
    std::optional<LoudnessChoice> choice;
    double loudest = -std::numeric_limits<double>::infinity(); // LUFS
    double softest = std::numeric_limits<double>::infinity();
};

Attempt search(const LoudnessGoal &goal, const GainLimits &limits, const LimiterCurve &curve)
{
    constexpr double kHundredth = 0.0101, kBeyondAllRanges = -1000.0; // dB
    Attempt attempt;
    const long steps = std::lround(-curve.points.front().threshold * kStepsPerDb);
    for (long step = 0; step <= steps; ++step) {
        const LimiterPoint point = pointAt(curve.points, -static_cast<double>(step) / kStepsPerDb);
        const auto reach = [&](double lift) { return lifted(goal, limits, curve.mode, point, lift); };
        const LoudnessChoice wanted = reach(goal.loudness - point.loudness);
        if (std::abs(wanted.predicted.loudness - goal.loudness) <= kHundredth &&
            wanted.predicted.truePeak <= goal.truePeak) {
            attempt.choice = wanted;
            break;
        }
        attempt.loudest = std::max(attempt.loudest, reach(goal.truePeak - point.truePeak).predicted.loudness);
        attempt.softest = std::min(attempt.softest, reach(kBeyondAllRanges).predicted.loudness);
    }
    return attempt;
}

std::string refusal(const LoudnessGoal &goal, const std::vector<LimiterCurve> &curves, double loudest,
                    double softest)
{
    if (goal.loudness < softest)
        return fmt::format(
            "{:g} LUFS is out of reach: the minimum is {:.1f} LUFS, with 'Gain' and 'Limiter "
            "Margin' at their lowest; give --loudness {:.1f} or more, or lower the bands' gains",
            goal.loudness, softest, std::ceil(softest * 10.0) / 10.0);
    const bool bypassed = curves.front().mode == LimiterMode::bypassed;
    std::string more = "raise and compress the bands more, or shorten 'Limiter Release'";
    if (bypassed) more = "leave out 'Limiter Bypass'";
    if (goal.truePeak < 0.0) more += ", or allow a higher --true-peak";
    if (curves.size() == 1 && curves.front().mode == LimiterMode::soft)
        more += ", or leave out 'Limiter Brickwall Mode=off'";
    const double offered = std::floor(loudest * 10.0) / 10.0;
    return fmt::format("{:g} LUFS is out of reach: with a true peak of at most {:g} dBTP the maximum is "
                       "{:.1f} LUFS, {}; give --loudness {:.1f} or less, or {}",
                       goal.loudness, goal.truePeak, offered,
                       bypassed ? "with the limiter bypassed"
                                : "where 'Limiter Threshold' or 'Gain' reaches its limit",
                       offered, more);
}

} // namespace

std::vector<std::string> LoudnessChoice::settings() const
{
    std::vector<std::string> list = {fmt::format("Gain={:.2f}", gain)};
    if (mode == LimiterMode::bypassed) return list;
    list.push_back(fmt::format("Limiter Threshold={:.2f}", threshold));
    list.push_back(fmt::format("Limiter Margin={:.2f}", margin));
    list.push_back(fmt::format("Limiter Brickwall Mode={}", mode == LimiterMode::brickwall ? "on" : "off"));
    return list;
}

LoudnessChoice choose(const LoudnessGoal &goal, const GainLimits &limits,
                      const std::vector<LimiterCurve> &curves)
{
    double loudest = -std::numeric_limits<double>::infinity();
    double softest = std::numeric_limits<double>::infinity();
    for (const LimiterCurve &curve : curves) {
        for (const LimiterPoint &point : curve.points) {
            if (!std::isfinite(point.loudness))
                throw Failure(
                    "the loudness cannot be measured: the effect's output is silent, below -70 LUFS "
                    "or shorter than 0.4 s; leave out --loudness");
        }
        const Attempt attempt = search(goal, limits, curve);
        if (attempt.choice) return *attempt.choice;
        loudest = std::max(loudest, attempt.loudest);
        softest = std::min(softest, attempt.softest);
    }
    throw Failure(refusal(goal, curves, loudest, softest));
}

} // namespace App
