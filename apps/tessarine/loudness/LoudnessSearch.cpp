#include "apps/tessarine/loudness/LoudnessSearch.h"

#include <algorithm>
#include <atomic>
#include <fmt/format.h>
#include <future>
#include <thread>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/effect/Assignment.h"
#include "apps/tessarine/effect/ParameterTable.h"
#include "apps/tessarine/files/Block.h"
#include "apps/tessarine/loudness/LoudnessMeter.h"

namespace App {

namespace {

constexpr uint32_t kBlockFrames = 1u << 14; // does not affect the output samples
/// Distance between measured thresholds in the first mode and in the fallback mode.
constexpr double kStepDb = 2.0, kSpareStepDb = 4.0;
constexpr const char *kModeName = "Limiter Brickwall Mode";

EffectHost::Layout layoutFor(const AudioReader &reader)
{
    return {.rate = reader.rate(), .channels = reader.channels(), .blockFrames = kBlockFrames};
}

/// Processes and measures the whole file at one limiter threshold.
class Candidate {
public:
    Candidate(EffectSetup setup, bool compensate, const AudioReader &reader, const LoudnessChoice &trial)
        : thresholdDb(trial.threshold),
          block(reader.channels(), kBlockFrames),
          meter(reader.channels(), reader.rate())
    {
        for (const std::string &setting : trial.settings()) setup.settings.push_back(setting);
        host = makeEffect(layoutFor(reader), setup);
        host->start();
        skip = compensate ? host->trueDelay() : 0;
    }

    /// Processes a block with separated channels. `begin` is the index of its first frame in the file.
    void run(const Block &input, uint64_t begin, uint32_t frames)
    {
        host->process(input.sides, block.sides, frames);
        block.interleave(frames);
        const uint32_t dropped = framesToSkip(skip, begin, frames);
        meter.add(block.from(dropped), frames - dropped);
    }

    uint32_t delay() const { return skip; }
    /// The levels at the limiter's output, without the make-up gain that raises the threshold to full scale.
    LimiterPoint point() const
    {
        const LoudnessMeter::Figures figures = meter.figures();
        return {thresholdDb, figures.loudness + thresholdDb, figures.truePeakDb + thresholdDb};
    }

private:
    const double thresholdDb;
    std::unique_ptr<EffectHost> host;
    uint32_t skip = 0; // frames to drop at the start, to compensate the delay
    Block block;
    LoudnessMeter meter;
};

struct Trials {
    LimiterMode mode;
    std::vector<std::unique_ptr<Candidate>> candidates; // in ascending order of threshold
};

/// Runs the candidates in parallel on all processors; they share no mutable state.
void runAll(const std::vector<Candidate *> &candidates, const Block &input, uint64_t begin, uint32_t frames)
{
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        for (size_t i = next++; i < candidates.size(); i = next++) candidates[i]->run(input, begin, frames);
    };
    const size_t helpers =
        std::min<size_t>(std::max(1u, std::thread::hardware_concurrency()), candidates.size()) - 1;
    std::vector<std::future<void>> others;
    for (size_t i = 0; i < helpers; ++i) others.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void> &other : others) other.get();
}

void hearFile(AudioReader &reader, const std::vector<Trials> &trials)
{
    std::vector<Candidate *> all;
    for (const Trials &family : trials) {
        for (const auto &candidate : family.candidates) all.push_back(candidate.get());
    }
    const uint64_t total = reader.frames() + all.front()->delay();
    Block input(reader.channels(), kBlockFrames);
    Progress progress(total, reader.rate());
    for (uint64_t begin = 0; begin < total; begin += kBlockFrames) {
        const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, total - begin));
        input.read(reader, frames);
        input.separate(frames);
        runAll(all, input, begin, frames);
        progress.show(begin + frames);
    }
}

std::vector<LimiterMode> modesToTry(const EffectSetup &setup, const TransformHandle &chain)
{
    if (chain.maximizer()->bypass()) return {LimiterMode::bypassed};
    if (chain.maximizer()->brickwall()) return {LimiterMode::brickwall};
    if (assigns(setup.settings, kModeName)) return {LimiterMode::soft};
    return {LimiterMode::soft, LimiterMode::brickwall};
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

LoudnessChoice findLoudness(const std::filesystem::path &in, const EffectSetup &setup, bool compensate,
                            const LoudnessGoal &goal)
{
    requireFree(setup);
    AudioReader reader(in);
    const std::unique_ptr<EffectHost> probe = makeEffect(layoutFor(reader), setup);
    const TransformHandle &chain = probe->plugin().transformHandle();
    if (chain.global()->getBypass())
        throw Failure(
            "'Global Bypass' is on, so the loudness cannot change; switch it off or leave out --loudness");

    const auto [leastThreshold, mostThreshold] = rangeOf(*probe, "Limiter Threshold");
    const auto [leastGain, mostGain] = rangeOf(*probe, "Gain");
    const auto [leastMargin, mostMargin] = rangeOf(*probe, "Limiter Margin");
    std::vector<Trials> trials;
    for (const LimiterMode mode : modesToTry(setup, chain)) {
        const double step = trials.empty() ? kStepDb : kSpareStepDb;
        Trials &family = trials.emplace_back(Trials{mode, {}});
        LoudnessChoice trial;
        trial.mode = mode;
        const double lowest = mode == LimiterMode::bypassed ? mostThreshold : leastThreshold;
        for (trial.threshold = lowest; trial.threshold <= mostThreshold; trial.threshold += step)
            family.candidates.push_back(std::make_unique<Candidate>(setup, compensate, reader, trial));
    }
    hearFile(reader, trials);

    std::vector<LimiterCurve> curves;
    for (const Trials &family : trials) {
        LimiterCurve &curve = curves.emplace_back(LimiterCurve{family.mode, {}});
        for (const auto &candidate : family.candidates) curve.points.push_back(candidate->point());
    }
    return choose(goal, {leastGain, mostGain, leastMargin}, curves);
}

} // namespace App
