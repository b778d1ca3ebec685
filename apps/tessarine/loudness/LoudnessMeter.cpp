#include "apps/tessarine/loudness/LoudnessMeter.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace {

constexpr int kMode = EBUR128_MODE_M | EBUR128_MODE_TRUE_PEAK;
constexpr uint32_t kHopsPerBlock = 4; // blocks overlap by three quarters
// BS.1770 gates: skip blocks at or below -70 LUFS, then blocks 10 LU below the mean of the others
constexpr double kAbsoluteGate = -70.0, kLoudest = 100.0; // LUFS
constexpr double kRelativeGate = 0.1;                     // factor on the mean energy, -10 LU
constexpr double kClassesPerLu = 10.0;

} // namespace

LoudnessMeter::LoudnessMeter(uint32_t channels, uint32_t rate)
    : state(ebur128_init(channels, rate, kMode)),
      hop((rate + 5) / 10),
      untilBlock(hop * kHopsPerBlock),
      classes(static_cast<size_t>((kLoudest - kAbsoluteGate) * kClassesPerLu) + 1)
{
    if (!state)
        throw Failure(
            fmt::format("the loudness meter does not support {} Hz; convert the sample rate first", rate));
}

void LoudnessMeter::add(const float *interleaved, uint32_t frames)
{
    clean.assign(interleaved, interleaved + size_t{frames} * state->channels);
    for (float &sample : clean) {
        if (!std::isfinite(sample)) sample = 0.0f;
    }
    for (uint32_t done = 0; done < frames;) {
        const uint32_t piece = std::min(frames - done, untilBlock);
        ebur128_add_frames_float(state.get(), clean.data() + size_t{done} * state->channels, piece);
        done += piece;
        untilBlock -= piece;
        if (untilBlock == 0) closeBlock();
    }
}

void LoudnessMeter::closeBlock()
{
    untilBlock = hop;
    double level = 0.0;
    if (ebur128_loudness_momentary(state.get(), &level) != EBUR128_SUCCESS || !(level > kAbsoluteGate))
        return;
    const double place = (std::min(level, kLoudest) - kAbsoluteGate) * kClassesPerLu;
    Class &heard = classes[static_cast<size_t>(place)];
    ++heard.blocks;
    heard.energy += std::pow(10.0, level / 10.0);
}

double LoudnessMeter::meanEnergy(double gate) const
{
    Class sum;
    for (const Class &heard : classes) {
        if (heard.energy <= gate * static_cast<double>(heard.blocks)) continue;
        sum.blocks += heard.blocks;
        sum.energy += heard.energy;
    }
    return sum.blocks == 0 ? 0.0 : sum.energy / static_cast<double>(sum.blocks);
}

double LoudnessMeter::loudness() const
{
    return 10.0 * std::log10(meanEnergy(kRelativeGate * meanEnergy(0.0)));
}

LoudnessMeter::Figures LoudnessMeter::figures() const
{
    double samplePeak = 0.0, truePeak = 0.0;
    for (unsigned channel = 0; channel < state->channels; ++channel) {
        double peak = 0.0;
        if (ebur128_sample_peak(state.get(), channel, &peak) == EBUR128_SUCCESS)
            samplePeak = std::max(samplePeak, peak);
        if (ebur128_true_peak(state.get(), channel, &peak) == EBUR128_SUCCESS)
            truePeak = std::max(truePeak, peak);
    }
    return {20.0 * std::log10(samplePeak), 20.0 * std::log10(std::max(truePeak, samplePeak)), loudness()};
}

} // namespace App
