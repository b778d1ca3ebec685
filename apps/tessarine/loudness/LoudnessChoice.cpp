#include "apps/tessarine/loudness/LoudnessChoice.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>

namespace App {

namespace {

constexpr int kStepsPerDb = 20; // resolution of the threshold search
/// An inter-sample peak is interpolated from several samples with slightly different gains.
constexpr double kPeakTolerance = 0.03; // dB

long gridStep(double threshold) { return std::lround(-threshold * kStepsPerDb); }
double thresholdAt(long step) { return -static_cast<double>(step) / kStepsPerDb; }

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
    const double sum =
        mode == LimiterMode::bypassed ? lift : lift + threshold; // the make-up gain is -threshold
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
    const double done = choice.lift();
    choice.predicted = {point.loudness + done, point.truePeak + done};
    return choice;
}

} // namespace

LoudnessAttempt findOn(const LimiterCurve &curve, const LoudnessGoal &goal, const GainLimits &limits)
{
    constexpr double kHundredth = 0.0101, kBeyondAllRanges = -1000.0; // dB
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    LoudnessAttempt attempt{std::nullopt, -kInfinity, kInfinity};
    const long first = gridStep(curve.points.back().threshold),
               last = gridStep(curve.points.front().threshold);
    for (long step = first; step <= last; ++step) {
        const LimiterPoint point = pointAt(curve.points, thresholdAt(step));
        const auto reach = [&](double lift) { return lifted(goal, limits, curve.mode, point, lift); };
        const LoudnessChoice wanted = reach(goal.loudness - point.loudness);
        if (std::abs(wanted.predicted.loudness - goal.loudness) <= kHundredth &&
            wanted.predicted.truePeak <= goal.truePeak) {
            attempt.choice = wanted;
            return attempt;
        }
        attempt.loudest = std::max(attempt.loudest, reach(goal.truePeak - point.truePeak).predicted.loudness);
        attempt.softest = std::min(attempt.softest, reach(kBeyondAllRanges).predicted.loudness);
    }
    return attempt;
}

double gridThreshold(double db) { return thresholdAt(gridStep(db)); }

void LimiterCurve::set(const LimiterPoint &point)
{
    const auto at = std::ranges::lower_bound(points, point.threshold, {}, &LimiterPoint::threshold);
    if (at != points.end() && at->threshold == point.threshold)
        *at = point;
    else
        points.insert(at, point);
}

std::vector<std::string> LoudnessChoice::settings() const
{
    std::vector<std::string> list = {fmt::format("Gain={:.2f}", gain)};
    list.push_back(fmt::format("Limiter Bypass={}", mode == LimiterMode::bypassed ? "on" : "off"));
    if (mode == LimiterMode::bypassed) return list;
    list.push_back(fmt::format("Limiter Threshold={:.2f}", threshold));
    list.push_back(fmt::format("Limiter Margin={:.2f}", margin));
    list.push_back(fmt::format("Limiter Brickwall Mode={}", mode == LimiterMode::brickwall ? "on" : "off"));
    return list;
}

} // namespace App
