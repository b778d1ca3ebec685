#include "apps/tessarine/Renderer.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "apps/tessarine/Assignment.h"
#include "apps/tessarine/AudioReader.h"
#include "apps/tessarine/AudioWriter.h"
#include "apps/tessarine/ChunkFile.h"
#include "apps/tessarine/CutoffCheck.h"
#include "apps/tessarine/EffectHost.h"
#include "apps/tessarine/FileFormat.h"
#include "apps/tessarine/Interrupt.h"
#include "apps/tessarine/Progress.h"

namespace App {

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kMeasurementsPerSecond = 100;

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// One block in both layouts: files have the channels side by side, the effect has them apart.
struct Block {
    Block(uint32_t channelCount, uint32_t frames)
        : channels(channelCount), interleaved(size_t{frames} * channelCount), left(frames), right(frames)
    {
    }
    void separate(uint32_t frames)
    {
        for (uint32_t i = 0; i < frames; ++i) {
            left[i] = interleaved[size_t{i} * channels];
            if (channels == 2) right[i] = interleaved[size_t{i} * 2 + 1];
        }
    }
    void interleave(uint32_t frames)
    {
        for (uint32_t i = 0; i < frames; ++i) {
            interleaved[size_t{i} * channels] = left[i];
            if (channels == 2) interleaved[size_t{i} * 2 + 1] = right[i];
        }
    }

    const uint32_t channels;
    std::vector<float> interleaved, left, right;
};

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
            stopIfInterrupted();
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
    /// Behind the end of the file follows silence, which pushes the last samples out of the effect.
    void readBlock(uint32_t frames)
    {
        const uint32_t got = reader.read(block.interleaved.data(), frames);
        std::fill(block.interleaved.begin() + ptrdiff_t{got} * block.channels,
                  block.interleaved.begin() + ptrdiff_t{frames} * block.channels, 0.0f);
        loudnessIn.add(block.interleaved.data(), got);
        measureLevel(frames, measured.peakIn, measured.squaresIn);
        block.separate(frames);
    }

    void process(uint32_t frames)
    {
        float *const channels[] = {block.left.data(), block.right.data()};
        const Clock::time_point begin = Clock::now();
        host.process(channels, channels, frames);
        effectSeconds += secondsSince(begin);
    }

    void writeBlock(uint32_t frames, uint64_t fed)
    {
        block.interleave(frames);
        measureLevel(frames, measured.peakOut, measured.squaresOut);
        const auto dropped =
            static_cast<uint32_t>(std::min<uint64_t>(frames, skip - std::min<uint64_t>(skip, fed)));
        const float *const kept = block.interleaved.data() + size_t{dropped} * block.channels;
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

    /// The meters keep their smallest value until they are read, so reading them seldom misses nothing.
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

} // namespace

Rendering render(const RenderOptions &options)
{
    const Clock::time_point begin = Clock::now();
    AudioReader reader(options.in);
    EffectHost host(
        {.rate = reader.rate(), .channels = reader.channels(), .blockFrames = options.blockFrames});
    if (!options.chunk.empty()) loadChunk(host, options.chunk);
    applySettings(host, options.settings);
    const DSP::CrossOver &crossOver = *host.plugin().transformHandle().crossOver();
    requireAscendingCutoffs(crossOver);
    host.start();

    AudioWriter writer(options.out, outputFormat(options.out, reader.info()));
    for (int tag = SF_STR_FIRST; tag <= SF_STR_LAST; ++tag) writer.setTag(tag, reader.tag(tag));
    Loop loop(options, reader, writer, host);
    loop.run(options.blockFrames);
    writer.finish();

    Rendering result;
    result.rate = reader.rate();
    result.channels = reader.channels();
    result.frames = reader.frames();
    result.formatIn = reader.info().format;
    result.formatOut = writer.format();
    result.clipped = writer.clippedSamples();
    result.warning = closeCutoffsWarning(crossOver, reader.rate());
    loop.report(result);
    result.seconds = secondsSince(begin);
    return result;
}

} // namespace App
