#include "apps/tessarine/render/Renderer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <utility>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/effect/EffectPass.h"
#include "apps/tessarine/effect/SettingsLine.h"
#include "apps/tessarine/files/AudioReader.h"
#include "apps/tessarine/files/AudioWriter.h"
#include "apps/tessarine/files/Excerpt.h"
#include "apps/tessarine/files/Metadata.h"
#include "apps/tessarine/loudness/LoudnessSearch.h"
#include "apps/tessarine/render/OutputPass.h"
#include "apps/tessarine/render/Worker.h"

namespace App {

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kMeasurementsPerSecond = 100;
constexpr uint32_t kChunkFrames = 1u << 13;
constexpr double kLoudnessTolerance = 0.1; // LU
constexpr int kMostCorrections = 3;

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// Collects the gain reductions of a chunk.
class GainMeter {
public:
    GainMeter(EffectHost &effect, uint32_t hz) : host(effect), rate(hz) {}

    /// The meters hold their minimum until they are read, so reading them less often loses no minimum.
    void add(uint32_t frames)
    {
        open.frames += frames;
        if (open.frames * kMeasurementsPerSecond >= rate) close();
    }
    /// Returns the columns of the chunk that has just ended.
    std::vector<Column> takeColumns()
    {
        if (open.frames > 0) close();
        return std::exchange(columns, {});
    }

private:
    void close()
    {
        const TransformHandle &chain = host.plugin().transformHandle();
        for (uint32_t band = 0; band < DSP::kBands; ++band)
            open.leastGain[band] = chain.dynamics()->readGainReduction(band);
        open.leastGain[Column::kLimiter] = chain.maximizer()->readGainReduction();
        for (int i = 0; i < Column::kGains; ++i)
            open.gainDbFrames[static_cast<size_t>(i)] =
                open.leastGainDb(i) * static_cast<double>(open.frames);
        columns.push_back(std::exchange(open, {}));
    }

    EffectHost &host;
    const uint32_t rate; // Hz
    Column open;
    std::vector<Column> columns;
};

/// Runs the effect and the output, each on a processor of its own if there are two.
void runPasses(EffectPass &effect, GainMeter &gains, OutputPass &output, uint64_t total, uint32_t blockFrames,
               uint32_t rate)
{
    const uint32_t chunkFrames = std::max(kChunkFrames / blockFrames, 1u) * blockFrames;
    struct {
        Chunk chunk;
        std::vector<Column> columns;
    } buffers[2];
    Worker writer; // works on the other buffer; destroyed first
    Progress progress(total, rate);
    for (uint64_t done = 0, turn = 0; done < total; ++turn) {
        Chunk &chunk = buffers[turn % 2].chunk;
        std::vector<Column> &columns = buffers[turn % 2].columns;
        effect.run(static_cast<uint32_t>(std::min<uint64_t>(chunkFrames, total - done)), chunk);
        columns = gains.takeColumns();
        writer.start([&output, &chunk, &columns] { output.take(chunk, columns); });
        done += chunk.frames;
        progress.show(done);
    }
    writer.wait();
}

/// Gain in dB that matches the input's loudness to the output's; 0 if either loudness is not measurable.
double matchingGain(const Rendering &result)
{
    const double gain = result.out.loudness - result.in.loudness;
    return std::isfinite(gain) ? gain : 0.0;
}

class Renderer {
public:
    explicit Renderer(const RenderOptions &wanted)
        : options(wanted),
          reader(options.in),
          writer(std::in_place, options.out, reader, options.samples),
          excerpt(excerptOf(reader)),
          metadata(options.in, reader.info().format),
          effect(options.effect)
    {
        if (!options.dry.empty()) dry.emplace(options.dry, reader, options.samples);
        if (!options.delta.empty()) delta.emplace(options.delta, reader, options.samples);
    }

    Rendering run()
    {
        const Clock::time_point begin = Clock::now();
        if (options.goal)
            reachGoal();
        else
            renderOnce(effect);
        if (options.truePeak) keepTruePeak();
        if (dry) writeDry();
        finish();
        if (isLossy(writer->format())) measureEncoded();
        stopIfInterrupted();
        for (std::optional<AudioWriter> *each : {&writer, &dry, &delta}) {
            if (*each) (*each)->commit();
        }
        result.seconds = secondsSince(begin);
        return std::move(result);
    }

private:
    Excerpt excerptOf(const AudioReader &file) const
    {
        const double rate = file.rate();
        const auto start = static_cast<uint64_t>(std::llround(std::min(options.start * rate, 1e15)));
        if (start >= file.frames())
            throw Failure(fmt::format("--start {:g} is after the end of {} ({:.2f} s); give an earlier time",
                                      options.start, options.in.string(),
                                      static_cast<double>(file.frames()) / rate));
        uint64_t length = file.frames() - start;
        if (options.length)
            length =
                std::min(length, static_cast<uint64_t>(std::llround(std::min(*options.length * rate, 1e15))));
        return {start, std::max<uint64_t>(length, 1)};
    }

    void renderOnce(EffectSetup setup);
    void reachGoal();
    void keepTruePeak();
    void writeDry();
    void finish();
    void measureEncoded();
    /// Discards the written output, to render again.
    void restart()
    {
        writer.emplace(options.out, reader, options.samples);
        if (delta) delta.emplace(options.delta, reader, options.samples);
    }

    const RenderOptions &options;
    AudioReader reader;
    std::optional<AudioWriter> writer, dry, delta;
    const Excerpt excerpt;
    const Metadata metadata;
    std::string settings; // for the comment tag
    EffectSetup effect;
    float outputGainDb = 0.0f; // of the first rendering
    DSP::FloatRange outputGainRange{};
    Rendering result;
};

void Renderer::renderOnce(EffectSetup setup)
{
    const uint32_t rate = reader.rate(), channels = reader.channels();
    const auto start = [&](const EffectSetup &wanted) {
        std::unique_ptr<EffectHost> made =
            makeEffect({.rate = rate, .channels = channels, .blockFrames = options.blockFrames}, wanted);
        made->disableSpectra();
        made->start();
        return made;
    };
    const std::unique_ptr<EffectHost> host = start(setup);
    EffectSetup mixedIn = neutralSetup(setup);
    mixedIn.settings.push_back(fmt::format("Gain={:.2f}", -result.loweredDb));
    const std::unique_ptr<EffectHost> neutral = options.mixPercent < 100.0 ? start(mixedIn) : nullptr;
    const DSP::Gain &gain = *host->plugin().transformHandle().gain();
    if (result.frames == 0) outputGainDb = gain.gain();
    outputGainRange = gain.floatParamRange(DSP::Gain::Param::gain);
    const uint64_t preRoll = excerpt.preRoll(rate);
    const uint32_t delay = host->trueDelay(), skip = options.compensate ? delay : 0;
    OutputPass output({.rate = rate,
                       .channels = channels,
                       .delay = delay,
                       .inBegin = preRoll,
                       .outBegin = preRoll + skip,
                       .length = excerpt.length,
                       .mix = options.mixPercent / 100.0},
                      *writer, delta ? &*delta : nullptr);
    reader.seek(excerpt.start - preRoll);
    const uint64_t zeroedBefore = reader.zeroedSamples();
    EffectPass pass(reader, *host, options.blockFrames, neutral.get());
    GainMeter gains(*host, rate);
    pass.afterBlock = [&gains](uint32_t frames) { gains.add(frames); };
    runPasses(pass, gains, output, preRoll + excerpt.length + skip, options.blockFrames, rate);

    result.rate = rate;
    result.channels = channels;
    result.frames = excerpt.length;
    result.settings = setup.settings;
    result.formatIn = reader.info().format;
    result.formatOut = writer->format();
    result.delay = delay;
    result.in = output.inFigures();
    result.out = output.outFigures();
    result.history = output.history();
    result.clipped = writer->clippedSamples();
    result.deltaClipped = delta ? delta->clippedSamples() : 0;
    result.silenced = reader.zeroedSamples() - zeroedBefore;
    result.effectSeconds = pass.effectSeconds();
    result.warning = closeCutoffsWarning(*host, rate);
    settings = settingsLine(*host);
    if (options.mixPercent < 100.0) settings += fmt::format(", mix {:g} %", options.mixPercent);
}

/// Renders, and corrects the choice by the measured result until the goal is reached.
void Renderer::reachGoal()
{
    LoudnessSearch search(options.in, excerpt, options.effect, options.compensate, *options.goal);
    LoudnessChoice choice = search.choose();
    const auto renderChoice = [&] {
        effect = options.effect;
        for (const std::string &setting : choice.settings()) effect.settings.push_back(setting);
        result.choice = choice;
        renderOnce(effect);
    };
    renderChoice();
    for (int corrections = 0; result.missesGoal() && corrections < kMostCorrections; ++corrections) {
        search.learn(choice, result.out.loudness, result.out.truePeakDb);
        const std::optional<LoudnessChoice> better = search.correct();
        if (!better || better->settings() == choice.settings()) break;
        choice = *better;
        restart();
        renderChoice();
    }
    const double excess = result.out.truePeakDb - options.goal->truePeak;
    if (excess <= 0.0) return;
    choice.gain -= std::ceil(excess * 100.0) / 100.0; // the maximum true peak matters more than the loudness
    restart();
    renderChoice();
}

/// Renders again with less gain if the output exceeds the maximum true peak.
void Renderer::keepTruePeak()
{
    constexpr double kSmallestStep = 0.01; // dB
    const auto gainDb = static_cast<double>(outputGainDb),
               leastGainDb = static_cast<double>(outputGainRange.minimum);
    for (int corrections = 0; corrections < kMostCorrections; ++corrections) {
        const double excess = result.out.truePeakDb - *options.truePeak;
        if (!(excess > 0.0)) return;
        const double lowerGain =
            gainDb - result.loweredDb - std::ceil(excess / kSmallestStep) * kSmallestStep;
        if (gainDb - result.loweredDb <= leastGainDb) return;
        result.loweredDb = gainDb - std::max(lowerGain, leastGainDb);
        EffectSetup lowered = effect;
        lowered.settings.push_back(fmt::format("Gain={:.2f}", gainDb - result.loweredDb));
        restart();
        renderOnce(lowered);
    }
}

/// Writes the input, aligned with the output and amplified to the same loudness, for a fair listening comparison.
void Renderer::writeDry()
{
    constexpr uint32_t kBlockFrames = 4096;
    AudioReader again(options.in);
    again.seek(excerpt.start);
    result.dryGainDb = matchingGain(result);
    const auto gain = static_cast<float>(std::pow(10.0, result.dryGainDb / 20.0));
    const uint64_t silent = std::min<uint64_t>(options.compensate ? 0 : result.delay, excerpt.length);
    std::vector<float> block(size_t{kBlockFrames} * again.channels());
    Progress progress(excerpt.length, again.rate());
    for (uint64_t done = 0; done < excerpt.length;) {
        const uint64_t end = done < silent ? silent : excerpt.length;
        const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, end - done));
        std::fill(block.begin(), block.end(), 0.0f);
        if (done >= silent) again.read(block.data(), frames);
        for (float &sample : block) sample *= gain;
        dry->write(block.data(), frames);
        done += frames;
        progress.show(done);
    }
    result.formatDry = dry->format();
    result.dryClipped = dry->clippedSamples();
}

/// Completes the files with the metadata of the input.
void Renderer::finish()
{
    const LoudnessMeter::Figures &out = result.out;
    MetadataChanges changes{.settings = settings,
                            .start = excerpt.start,
                            .isExcerpt = excerpt.length < reader.frames(),
                            .loudness = MeasuredLoudness{out.loudness, out.range, out.truePeakDb,
                                                         out.maxMomentary, out.maxShortTerm}};
    const MetadataLoss loss = writer->finish(metadata, changes);
    result.metadataRemarks = loss.remarks(options.in.extension().string(), options.out.extension().string());
    changes.loudness.reset();
    if (delta) delta->finish(metadata, changes);
    changes.settings.clear();
    if (dry) dry->finish(metadata, changes);
}

/// Decodes the output file and measures its true peak, which a lossy encoder changes.
void Renderer::measureEncoded()
{
    constexpr uint32_t kBlockFrames = 4096;
    AudioReader encoded(writer->temporaryPath());
    TruePeakMeter meter(encoded.channels(), encoded.rate());
    std::vector<float> block(size_t{kBlockFrames} * encoded.channels());
    while (const uint32_t frames = encoded.read(block.data(), kBlockFrames)) {
        stopIfInterrupted();
        meter.add(block.data(), frames);
    }
    result.encodedTruePeakDb = 20.0 * std::log10(meter.truePeak());
}

} // namespace

bool Rendering::missesLoudness() const
{
    return choice && !(std::abs(out.loudness - choice->goal.loudness) <= kLoudnessTolerance);
}

bool Rendering::missesGoal() const
{
    return missesLoudness() || (choice && out.truePeakDb > choice->goal.truePeak);
}

Rendering render(const RenderOptions &options) { return Renderer(options).run(); }

} // namespace App
