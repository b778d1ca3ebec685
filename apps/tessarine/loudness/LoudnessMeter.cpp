#include "apps/tessarine/loudness/LoudnessMeter.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <new>

#include "apps/tessarine/console/Failure.h"

namespace App {

LoudnessMeter::LoudnessMeter(uint32_t channels, uint32_t rate)
    : state(ebur128_init(channels, rate, EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK))
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
    if (ebur128_add_frames_float(state.get(), clean.data(), frames) != EBUR128_SUCCESS)
        throw std::bad_alloc();
}

LoudnessMeter::Figures LoudnessMeter::figures() const
{
    double samplePeak = 0.0, truePeak = 0.0, loudness = 0.0;
    for (unsigned channel = 0; channel < state->channels; ++channel) {
        double peak = 0.0;
        if (ebur128_sample_peak(state.get(), channel, &peak) == EBUR128_SUCCESS)
            samplePeak = std::max(samplePeak, peak);
        if (ebur128_true_peak(state.get(), channel, &peak) == EBUR128_SUCCESS)
            truePeak = std::max(truePeak, peak);
    }
    ebur128_loudness_global(state.get(), &loudness);
    return {20.0 * std::log10(samplePeak), 20.0 * std::log10(std::max(truePeak, samplePeak)), loudness};
}

} // namespace App
