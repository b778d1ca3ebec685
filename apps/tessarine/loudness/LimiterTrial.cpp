#include "apps/tessarine/loudness/LimiterTrial.h"

#include <algorithm>

#include "apps/tessarine/files/Block.h"
#include "dsp/numerics/FloatState.h"

namespace App {

namespace {
constexpr uint32_t kPieceFrames = 1024; // stays in the cache; does not affect the samples
}

LimiterTrial::LimiterTrial(uint32_t channelCount, uint32_t rate, const DSP::Maximizer &settings,
                           LimiterMode mode, double threshold, uint64_t skip, uint64_t length)
    : channels(channelCount),
      thresholdDb(threshold),
      begin(skip),
      end(skip + length),
      limiter(plugin),
      meter(channelCount, rate, LoudnessMeter::Scope::integrated),
      interleaved(size_t{kPieceFrames} * channelCount)
{
    limiter.setThreshold(static_cast<float>(threshold));
    limiter.setAttack(settings.attack());
    limiter.setRelease(settings.release());
    limiter.setBypass(mode == LimiterMode::bypassed);
    limiter.setBrickwall(mode == LimiterMode::brickwall);
    limiter.setSampleRate(rate);
    limiter.reset();
    for (std::vector<float> &side : sides) side.resize(kPieceFrames);
}

void LimiterTrial::add(const float *left, const float *right, uint32_t frames)
{
    const DSP::FloatState floatState;
    for (uint32_t done = 0; done < frames;) {
        const uint32_t count = std::min(frames - done, kPieceFrames);
        std::copy_n(left + done, count, sides[0].data());
        if (right) std::copy_n(right + done, count, sides[1].data());
        limiter.process({count, sides[0].data(), right ? sides[1].data() : nullptr});
        interleave(sides[0].data(), sides[1].data(), channels, count, interleaved.data());
        const FrameRange kept = overlap(position, count, begin, end);
        meter.add(interleaved.data() + size_t{kept.first} * channels, kept.count);
        position += count;
        done += count;
    }
}

LimiterPoint LimiterTrial::point()
{
    const LoudnessMeter::Figures figures = meter.figures();
    const double makeUp = limiter.bypass() ? 0.0 : -thresholdDb;
    return {thresholdDb, figures.loudness - makeUp, figures.truePeakDb - makeUp};
}

uint32_t LimiterTrial::delay() { return DSP::kMaximizerInputDelay - 1 + DSP::kMaximizerOutputDelay - 1; }

} // namespace App
