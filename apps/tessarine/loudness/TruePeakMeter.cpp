#include "apps/tessarine/loudness/TruePeakMeter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "dsp/kernels/Kernels.h"

namespace App {

namespace {

constexpr uint32_t kTaps = 49; // at the oversampled rate

uint32_t oversampling(uint32_t rate) { return rate < 96000 ? 4 : rate < 192000 ? 2 : 1; }

/// Tap `index` of the interpolation filter: a sinc with a Hann window.
double tap(uint32_t index, uint32_t factor)
{
    using std::numbers::pi;
    const double x = (index - (kTaps - 1) / 2.0) * pi / factor;
    const double sinc = x == 0.0 ? 1.0 : std::sin(x) / x;
    return sinc * 0.5 * (1.0 - std::cos(2.0 * pi * index / (kTaps - 1)));
}

/// Filters `count` samples that follow earlier ones in memory. Frames are `stride` samples apart.
void filter(const std::vector<float> &taps, const float *samples, size_t stride, float *out, size_t count)
{
    std::fill_n(out, count, 0.0f);
    for (size_t k = 0; k < taps.size(); ++k) {
        const float factor = taps[k];
        const float *const delayed = samples - k * stride;
        for (size_t i = 0; i < count; ++i) out[i] += factor * delayed[i];
    }
}

} // namespace

TruePeakMeter::TruePeakMeter(uint32_t channelCount, uint32_t rate)
    : channels(channelCount),
      window(size_t{2} * kPiece * channelCount),
      interpolated(size_t{kPiece} * channelCount)
{
    const uint32_t factor = oversampling(rate);
    for (uint32_t phase = 1; phase < factor; ++phase) { // phase 0 is the samples themselves
        float sum = 0.0f;
        std::vector<float> &taps = phases.emplace_back();
        for (uint32_t index = phase; index < kTaps; index += factor) {
            taps.push_back(static_cast<float>(tap(index, factor)));
            sum += std::abs(taps.back());
        }
        bound = std::max(bound, sum);
    }
}

void TruePeakMeter::add(const float *interleaved, uint32_t frames)
{
    while (frames > 0) {
        const uint32_t count = std::min(frames, kPiece - filled);
        std::copy_n(interleaved, size_t{count} * channels,
                    window.data() + size_t{kPiece + filled} * channels);
        filled += count;
        interleaved += size_t{count} * channels;
        frames -= count;
        if (filled < kPiece) return;
        measurePiece();
        std::copy_n(window.data() + window.size() / 2, window.size() / 2, window.data());
        previousPeak = piecePeak;
        filled = 0;
    }
}

void TruePeakMeter::measurePiece()
{
    const auto peak = DSP::Kernels::active().block.peak;
    const float *const piece = window.data() + window.size() / 2;
    const uint32_t samples = filled * channels;
    piecePeak = peak(piece, samples);
    highestSample = std::max(highestSample, piecePeak);
    highest = std::max(highest, piecePeak);
    if (std::max(previousPeak, piecePeak) * bound <= highest) return;
    for (const std::vector<float> &taps : phases) {
        filter(taps, piece, channels, interpolated.data(), interpolated.size());
        highest = std::max(highest, peak(interpolated.data(), samples));
    }
}

double TruePeakMeter::samplePeak()
{
    measurePiece();
    return static_cast<double>(highestSample);
}

double TruePeakMeter::truePeak()
{
    measurePiece();
    return static_cast<double>(highest);
}

} // namespace App
