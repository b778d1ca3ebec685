#include "apps/tessarine/loudness/LoudnessSearch.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <fmt/format.h>
#include <future>
#include <memory>
#include <thread>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/effect/Assignment.h"
#include "apps/tessarine/effect/ParameterTable.h"

namespace App {

namespace {

constexpr uint32_t kSearchChunk = 1u << 15, kSearchBlock = 4096; // neither affects the samples
constexpr const char *kBypassName = "Limiter Bypass", *kModeName = "Limiter Brickwall Mode";
/// Distances in dB of the thresholds of a pass. Most goals need 0 to 4 dB of limiting.
constexpr double kFirstSteps[] = {0.0, 1.0, 2.0, 4.0, 7.0}, kFurtherSteps[] = {4.0, 8.0, 12.0, 20.0};

EffectHost::Layout layoutFor(const AudioReader &reader)
{
    return {.rate = reader.rate(), .channels = reader.channels(), .blockFrames = kSearchBlock};
}

using Trials = std::vector<std::unique_ptr<LimiterTrial>>;

/// Runs the trials in parallel on all processors; they share no mutable state.
void runAll(const Trials &trials, const float *left, const float *right, uint32_t frames)
{
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        for (size_t i = next++; i < trials.size(); i = next++) trials[i]->add(left, right, frames);
    };
    const size_t helpers =
        std::min<size_t>(std::max(1u, std::thread::hardware_concurrency()), trials.size()) - 1;
    std::vector<std::future<void>> others;
    for (size_t i = 0; i < helpers; ++i) others.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void> &other : others) other.get();
}

std::vector<LimiterMode> modesToTry(const EffectSetup &setup, const DSP::Maximizer &limiter)
{
    std::vector<LimiterMode> modes;
    if (limiter.bypass()) return {LimiterMode::bypassed};
    if (!assigns(setup.settings, kBypassName)) modes.push_back(LimiterMode::bypassed);
    if (limiter.brickwall()) {
        modes.push_back(LimiterMode::brickwall);
        return modes;
    }
    modes.push_back(LimiterMode::soft);
    if (!assigns(setup.settings, kModeName)) modes.push_back(LimiterMode::brickwall);
    return modes;
}

std::pair<double, double> rangeOf(const EffectHost &host, const char *name)
{
    for (const Parameter &parameter : listParameters(host)) {
        if (parameter.name == name) return {parameter.minimum, parameter.maximum};
    }
    throw Failure(fmt::format("the effect has no parameter '{}'", name));
}

void requireFree(const EffectSetup &setup)
{
    constexpr const char *kChosen[] = {"Gain", "Limiter Threshold", "Limiter Margin"};
    for (const char *name : kChosen) {
        if (assigns(setup.settings, name))
            throw Failure(fmt::format(
                "--loudness chooses '{}' itself; leave out --set \"{}=...\" or --loudness", name, name));
    }
    const std::string changed = setup.chunk.empty() ? "" : changedByChunk(setup.chunk, kChosen);
    if (!changed.empty())
        throw Failure(fmt::format("{} sets \"{}\", which --loudness chooses itself; use a chunk with the "
                                  "default, or leave out --chunk or --loudness",
                                  setup.chunk.string(), changed));
}

} // namespace

LoudnessSearch::LoudnessSearch(std::filesystem::path file, const Excerpt &part, EffectSetup effect,
                               bool compensated, const LoudnessGoal &wanted)
    : in(std::move(file)), excerpt(part), setup(std::move(effect)), compensate(compensated), goal(wanted)
{
    requireFree(setup);
    const AudioReader reader(in);
    const std::unique_ptr<EffectHost> probe = makeEffect(layoutFor(reader), setup);
    const TransformHandle &chain = probe->plugin().transformHandle();
    if (chain.global()->getBypass())
        throw Failure(
            "'Global Bypass' is on, so the loudness cannot change; switch it off or leave out --loudness");
    modes = modesToTry(setup, *chain.maximizer());
    leastThreshold = rangeOf(*probe, "Limiter Threshold").first;
    limits = {rangeOf(*probe, "Gain").first, rangeOf(*probe, "Gain").second,
              rangeOf(*probe, "Limiter Margin").first};
    setup.settings.insert(setup.settings.end(), {"Gain=0", "Limiter Bypass=on"});
    measure(curveOf(LimiterMode::bypassed), {0.0});
}

LimiterCurve &LoudnessSearch::curveOf(LimiterMode mode)
{
    const auto found = std::ranges::find(curves, mode, &LimiterCurve::mode);
    return found != curves.end() ? *found : curves.emplace_back(LimiterCurve{mode, {}});
}

LoudnessChoice LoudnessSearch::choose()
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    double loudest = -kInfinity, softest = kInfinity;
    for (const LimiterMode mode : modes) {
        LimiterCurve curve = curveOf(mode);
        for (;;) {
            if (!curve.points.empty()) {
                const LoudnessAttempt attempt = findOn(curve, goal, limits);
                if (attempt.choice) return *attempt.choice;
                loudest = std::max(loudest, attempt.loudest);
                softest = std::min(softest, attempt.softest);
            }
            const std::vector<double> next = nextThresholds(curve);
            if (next.empty()) break;
            measure(curve, next);
            curveOf(mode) = curve;
        }
    }
    throw Failure(refusal(loudest, softest));
}

std::vector<double> LoudnessSearch::nextThresholds(const LimiterCurve &curve) const
{
    if (curve.mode == LimiterMode::bypassed) return {};
    // A limiter cannot bring peaks far below its threshold. At a higher threshold than this the ratio of peak to loudness
    // stays larger than the goal's.
    const double unlimited = curves.front().points.front().loudness;
    const double start = curve.points.empty()
                             ? std::clamp(unlimited + goal.truePeak - goal.loudness, leastThreshold, 0.0)
                             : curve.points.front().threshold;
    std::vector<double> thresholds;
    const auto add = [&](double step) {
        const double threshold = std::max(gridThreshold(start - step), leastThreshold);
        const bool isKnown = !thresholds.empty() ? threshold >= thresholds.back()
                                                 : !curve.points.empty() && threshold >= start;
        if (!isKnown) thresholds.push_back(threshold);
    };
    if (curve.points.empty()) {
        for (const double step : kFirstSteps) add(step);
    } else {
        for (const double step : kFurtherSteps) add(step);
    }
    return thresholds;
}

void LoudnessSearch::measure(LimiterCurve &curve, const std::vector<double> &thresholds)
{
    AudioReader reader(in);
    const uint64_t preRoll = excerpt.preRoll(reader.rate());
    reader.seek(excerpt.start - preRoll);
    const std::unique_ptr<EffectHost> host = makeEffect(layoutFor(reader), setup);
    host->start();
    const uint64_t skip = preRoll + LimiterTrial::delay() + (compensate ? host->trueDelay() : 0);
    const uint64_t total = skip + excerpt.length;
    Trials trials;
    for (const double threshold : thresholds)
        trials.push_back(std::make_unique<LimiterTrial>(reader.channels(), reader.rate(),
                                                        *host->plugin().transformHandle().maximizer(),
                                                        curve.mode, threshold, skip, excerpt.length));
    EffectPass pass(reader, *host, kSearchBlock);
    Chunk chunk;
    Progress progress(total, reader.rate());
    for (uint64_t done = 0; done < total; done += chunk.frames) {
        pass.run(static_cast<uint32_t>(std::min<uint64_t>(kSearchChunk, total - done)), chunk);
        runAll(trials, chunk.left.data(), reader.channels() == 2 ? chunk.right.data() : nullptr,
               chunk.frames);
        progress.show(done + chunk.frames);
    }
    for (const std::unique_ptr<LimiterTrial> &trial : trials) {
        const LimiterPoint point = trial->point();
        if (!std::isfinite(point.loudness))
            throw Failure("the loudness cannot be measured: the effect's output is silent, below -70 LUFS "
                          "or shorter than 0.4 s; leave out --loudness");
        curve.set(point);
    }
}

void LoudnessSearch::learn(const LoudnessChoice &choice, double loudness, double truePeak)
{
    curveOf(choice.mode)
        .set({choice.mode == LimiterMode::bypassed ? 0.0 : choice.threshold, loudness - choice.lift(),
              truePeak - choice.lift()});
}

std::optional<LoudnessChoice> LoudnessSearch::correct()
{
    try {
        return choose();
    } catch (const Failure &) { // an accurate value has replaced an optimistic prediction
        return std::nullopt;
    }
}

std::string LoudnessSearch::refusal(double loudest, double softest) const
{
    if (goal.loudness < softest)
        return fmt::format(
            "{:g} LUFS is out of reach: the minimum is {:.1f} LUFS, with 'Gain' and 'Limiter "
            "Margin' at their lowest; give --loudness {:.1f} or more, or lower the bands' gains",
            goal.loudness, softest, std::ceil(softest * 10.0) / 10.0);
    const bool bypassed = modes == std::vector{LimiterMode::bypassed};
    std::string more = "raise and compress the bands more, or shorten 'Limiter Release'";
    if (bypassed) more = "leave out 'Limiter Bypass'";
    if (goal.truePeak < 0.0) more += ", or allow a higher --true-peak";
    if (modes.back() == LimiterMode::soft) more += ", or leave out 'Limiter Brickwall Mode=off'";
    constexpr double kInterpolationError = 0.1; // LU
    const double offered = std::floor((loudest - kInterpolationError) * 10.0) / 10.0;
    return fmt::format("{:g} LUFS is out of reach: with a true peak of at most {:g} dBTP the maximum is "
                       "{:.1f} LUFS, {}; give --loudness {:.1f} or less, or {}",
                       goal.loudness, goal.truePeak, offered,
                       bypassed ? "with the limiter bypassed"
                                : "where 'Limiter Threshold' or 'Gain' reaches its limit",
                       offered, more);
}

} // namespace App
