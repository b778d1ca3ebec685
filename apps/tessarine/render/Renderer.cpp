#include "apps/tessarine/render/Renderer.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/files/AudioReader.h"
#include "apps/tessarine/files/AudioWriter.h"
#include "apps/tessarine/files/Block.h"
#include "apps/tessarine/loudness/LoudnessSearch.h"

namespace App {

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kMeasurementsPerSecond = 100;

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

class Loop {
public:
    Loop(const RenderOptions &options, AudioReader &from, AudioWriter &to, EffectHost &effect)
        : reader(from),
          writer(to),
          host(effect),
          delay(host.trueDelay()),
          skip(options.compensate ? delay : 0),
          loudnessIn(reader.channels(), reader.rate()),
          loudnessOut(reader.channels(), reader.rate()),
          block(reader.channels(), options.blockFrames)
    {
    }

    void run(uint32_t blockFrames)
    {
        const uint64_t total = reader.frames() + skip;
        Progress progress(total, reader.rate());
        for (uint64_t fed = 0; fed < total;) {
            const auto frames = static_cast<uint32_t>(std::min<uint64_t>(blockFrames, total - fed));
            readBlock(frames);
            process(frames);
            writeBlock(frames, fed);
            measureGains(frames);
            fed += frames;
            progress.show(fed);
        }
        if (measured.frames > 0) closeMeasurement();
    }

    void report(Rendering &result) const
    {
        result.delay = delay;
        result.in = loudnessIn.figures();
        result.out = loudnessOut.figures();
        result.history = history;
        result.effectSeconds = effectSeconds;
        result.silenced = host.plugin().transformHandle().transformBase()->refusedSamples();
    }

private:
    void readBlock(uint32_t frames)
    {
        const uint32_t got = block.read(reader, frames);
        loudnessIn.add(block.interleaved.data(), got);
        measureLevel(frames, measured.peakIn, measured.squaresIn);
        block.separate(frames);
    }

    void process(uint32_t frames)
    {
        const Clock::time_point begin = Clock::now();
        host.process(block.sides, block.sides, frames);
        effectSeconds += secondsSince(begin);
    }

    void writeBlock(uint32_t frames, uint64_t fed)
    {
        block.interleave(frames);
        measureLevel(frames, measured.peakOut, measured.squaresOut);
        const uint32_t dropped = framesToSkip(skip, fed, frames);
        const float *const kept = block.from(dropped);
        loudnessOut.add(kept, frames - dropped);
        writer.write(kept, frames - dropped);
    }

    void measureLevel(uint32_t frames, float &peak, double &squares) const
    {
        const size_t samples = size_t{frames} * block.channels;
        double sum = 0.0;
        for (size_t i = 0; i < samples; ++i) {
            const float sample = block.interleaved[i];
            if (!std::isfinite(sample)) continue;
            peak = std::max(peak, std::abs(sample));
            sum += static_cast<double>(sample) * static_cast<double>(sample);
        }
        squares += sum / block.channels;
    }

    /// The meters hold their minimum until they are read, so reading them less often loses no minimum.
    void measureGains(uint32_t frames)
    {
        measured.frames += frames;
        if (measured.frames * kMeasurementsPerSecond >= reader.rate()) closeMeasurement();
    }

    void closeMeasurement()
    {
        const TransformHandle &chain = host.plugin().transformHandle();
        for (uint32_t band = 0; band < DSP::kBands; ++band)
            measured.leastGain[band] = chain.dynamics()->readGainReduction(band);
        measured.leastGain[Column::kLimiter] = chain.maximizer()->readGainReduction();
        for (int i = 0; i < Column::kGains; ++i)
            measured.gainDbFrames[static_cast<size_t>(i)] =
                measured.leastGainDb(i) * static_cast<double>(measured.frames);
        history.add(measured);
        measured = Column();
    }

    AudioReader &reader;
    AudioWriter &writer;
    EffectHost &host;
    const uint32_t delay, skip; // samples
    LoudnessMeter loudnessIn, loudnessOut;
    Block block;
    Column measured;
    History history;
    double effectSeconds = 0.0;
};

/// Gain in dB that matches the input's loudness to the output's; 0 if either loudness is not measurable.
double matchingGain(const Rendering &result)
{
    const double gain = result.out.loudness - result.in.loudness;
    return std::isfinite(gain) ? gain : 0.0;
}

/// Writes the input, delayed by `delay` frames and amplified by `gainDb`, for a fair listening comparison
/// with the output. Keeps the length of the input. Zeroes NaN and infinite samples. The caller must call
/// writer.finish().
void writeDry(AudioReader &reader, AudioWriter &writer, uint32_t delay, double gainDb)
{
    constexpr uint32_t kBlockFrames = 4096;
    const auto gain = static_cast<float>(std::pow(10.0, gainDb / 20.0));
    const uint64_t silent = std::min<uint64_t>(delay, reader.frames());
    std::vector<float> block(size_t{kBlockFrames} * reader.channels());
    Progress progress(reader.frames(), reader.rate());
    for (uint64_t done = 0; done < reader.frames();) {
        const uint64_t end = done < silent ? silent : reader.frames();
        const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, end - done));
        std::fill(block.begin(), block.end(), 0.0f);
        if (done >= silent) reader.read(block.data(), frames);
        for (float &sample : block) sample = std::isfinite(sample) ? sample * gain : 0.0f;
        writer.write(block.data(), frames);
        done += frames;
        progress.show(done);
    }
}

} // namespace

Rendering render(const RenderOptions &options)
{
    const Clock::time_point begin = Clock::now();
    Rendering result;
    AudioReader reader(options.in);
    AudioWriter writer(options.out, reader);
    std::optional<AudioWriter> dry;
    if (!options.dry.empty()) dry.emplace(options.dry, reader);

    EffectSetup effect = options.effect;
    if (options.goal) {
        result.choice = findLoudness(options.in, effect, options.compensate, *options.goal);
        for (const std::string &setting : result.choice->settings()) effect.settings.push_back(setting);
    }
    const std::unique_ptr<EffectHost> host = makeEffect(
        {.rate = reader.rate(), .channels = reader.channels(), .blockFrames = options.blockFrames}, effect);
    host->start();
    Loop loop(options, reader, writer, *host);
    loop.run(options.blockFrames);
    loop.report(result);
    if (dry) {
        AudioReader again(options.in); // before writer.finish(), which may replace the input file
        result.dryGainDb = matchingGain(result);
        writeDry(again, *dry, options.compensate ? 0 : result.delay, result.dryGainDb);
    }
    writer.finish();
    if (dry) dry->finish();

    result.rate = reader.rate();
    result.channels = reader.channels();
    result.frames = reader.frames();
    result.settings = effect.settings;
    result.formatIn = reader.info().format;
    result.formatOut = writer.format();
    result.clipped = writer.clippedSamples();
    if (dry) {
        result.formatDry = dry->format();
        result.dryClipped = dry->clippedSamples();
    }
    result.warning = closeCutoffsWarning(*host, reader.rate());
    result.seconds = secondsSince(begin);
    return result;
}

} // namespace App
