#include "apps/tessarine/LoudnessMeter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "apps/tessarine/Failure.h"

namespace App {

namespace {

constexpr int kMode = EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK | EBUR128_MODE_HISTOGRAM;

} // namespace

LoudnessMeter::LoudnessMeter(uint32_t channels, uint32_t rate) : state(ebur128_init(channels, rate, kMode))
{
    if (!state)
        throw Failure("the loudness meter does not start at this sample rate; convert the file first");
}

void LoudnessMeter::add(const float *interleaved, uint32_t frames)
{
    clean.assign(interleaved, interleaved + size_t{frames} * state->channels);
    for (float &sample : clean) {
        if (!std::isfinite(sample)) sample = 0.0f;
    }
    ebur128_add_frames_float(state.get(), clean.data(), frames);
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
    double loudness = -std::numeric_limits<double>::infinity();
    ebur128_loudness_global(state.get(), &loudness);
    return {20.0 * std::log10(samplePeak), 20.0 * std::log10(std::max(truePeak, samplePeak)), loudness};
}

} // namespace App
