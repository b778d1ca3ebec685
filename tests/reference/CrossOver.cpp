#include "tests/reference/CrossOver.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "tests/reference/Settings.h"

namespace Reference {

/// Bilinear transform of a Butterworth filter: 1 / (s^2 + sqrt(2) s + 1), for the high pass s^2 / (s^2 + sqrt(2) s + 1),
/// with K = tan(pi fc / fs). designGain covers both sections.
Cascade Cascade::design(bool highPass, double hz, double sampleRate)
{
    const double k = std::tan(std::numbers::pi * (hz / sampleRate)), root = std::numbers::sqrt2 * k;
    const double a0 = 1 + root + k * k, gain = (highPass ? 1 : k * k) / a0;
    Cascade cascade;
    cascade.b[1] = highPass ? -2 : 2;
    cascade.b[2] = 1;
    cascade.a[1] = static_cast<float>(2 * (k * k - 1) / a0);
    cascade.a[2] = static_cast<float>((1 - root + k * k) / a0);
    cascade.designGain = gain * gain;
    return cascade;
}

float Cascade::run(float x)
{
    double signal = x;
    for (Section &s : sections) {
        const double y = b[0] * signal + b[1] * s.x1 + b[2] * s.x2 - a[1] * s.y1 - a[2] * s.y2;
        s = {signal, s.x1, y, s.y1};
        signal = y;
    }
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(signal, -most, most));
}

CrossOver::CrossOver()
{
    updateFade();
    designFilters(sets[0]);
}

void CrossOver::updateFade()
{
    const auto length = static_cast<uint32_t>(std::floor(sampleRate * 0.0014512471 + 0.5));
    fadeIn.resize(length);
    fadeOut.resize(length);
    for (uint32_t i = 0; i < length; ++i) {
        fadeIn[i] = static_cast<float>((1 - std::cos((i + 0.5) * 3.1415927f / length)) * 0.5);
        fadeOut[i] = 1 - fadeIn[i];
    }
}

void CrossOver::designFilters(FilterSet &set) const
{
    if (!std::is_sorted(cutoffs, cutoffs + 3)) return;
    set = {};
    // below 20 Hz the filter with rounded taps would be unstable at high rates
    double hz[3];
    for (int i = 0; i < 3; ++i) hz[i] = std::max(cutoffs[i], 20.0f);

    int used = 0;
    while (used < 3 && sampleRate * 0.5 > hz[used]) ++used;
    for (int band = 0; used != 0 && band <= used; ++band) {
        Band &b = set[band];
        const bool hasLow = band<used, hasHigh = band> 0;
        const Cascade low = hasLow ? Cascade::design(false, hz[band], sampleRate) : Cascade();
        const Cascade high = hasHigh ? Cascade::design(true, hz[band - 1], sampleRate) : Cascade();
        b.filters = hasLow && hasHigh ? 2 : 1;
        for (int channel = 0; channel < 2; ++channel) {
            b.first[channel] = hasLow ? low : high;
            b.second[channel] = high;
        }
        float lift = 1;
        if (b.filters == 2) lift = static_cast<float>(6 / std::pow(hz[band] / hz[band - 1], 3) + 1);
        b.gain = static_cast<float>(lift * low.designGain * high.designGain);
    }
}

void CrossOver::setSampleRate(uint32_t hz)
{
    if (hz == sampleRate) return;
    sampleRate = hz;
    updateFade();
    fadeRemaining = 0;
    designFilters(sets[activeSet]);
}

void CrossOver::setCutoff(int index, float hz)
{
    if (hz == cutoffs[index]) return;
    if (fadeRemaining == 0) activeSet = 1 - activeSet;
    fadeRemaining = static_cast<uint32_t>(fadeIn.size());
    cutoffs[index] = hz;
    designFilters(sets[activeSet]);
}

void CrossOver::reset()
{
    fadeRemaining = 0;
    guardPhase = 0;
    for (Band &band : sets[activeSet]) {
        for (int channel = 0; channel < 2; ++channel) {
            band.first[channel].clear();
            band.second[channel].clear();
        }
    }
}

void CrossOver::processSet(FilterSet &set, int channel, uint32_t frames, const float *in, float *const *out,
                           const std::vector<float> *table, uint32_t offset) const
{
    for (int b = 0; b < 4; ++b) {
        Band &band = set[b];
        for (uint32_t i = 0; i < frames; ++i) {
            float y = b == 0 ? in[i] : 0.0f;
            if (band.filters >= 1) y = band.first[channel].run(in[i]) * band.gain;
            if (band.filters == 2) y = band.second[channel].run(y);
            if (table && offset + i < table->size()) y *= (*table)[offset + i];
            out[b][i] = y;
        }
    }
}

void CrossOver::process(uint32_t frames, const float *left, const float *right, float *const *bandsLeft,
                        float *const *bandsRight)
{
    // A block shorter than the remaining fade uses the last entries of the tables: part of the sound.
    const uint32_t fading = std::min(frames, fadeRemaining);
    const auto offset = static_cast<uint32_t>(fadeIn.size()) - fading;
    for (int channel = 0; channel < (right ? 2 : 1); ++channel) {
        const float *in = channel ? right : left;
        float *const *out = channel ? bandsRight : bandsLeft;
        processSet(sets[activeSet], channel, frames, in, out, fading ? &fadeIn : nullptr, offset);
        if (!fading) continue;
        std::vector<float> old[4];
        float *pieces[4];
        for (int b = 0; b < 4; ++b) {
            old[b].resize(fading);
            pieces[b] = old[b].data();
        }
        processSet(sets[1 - activeSet], channel, fading, in, pieces, &fadeOut, offset);
        for (int b = 0; b < 4; ++b)
            for (uint32_t i = 0; i < fading; ++i) out[b][i] += old[b][i];
    }
    fadeRemaining -= fading;
    for (uint32_t i = 0; i < frames; ++i, ++guardPhase)
        for (int b = 0; b < 4; ++b) {
            bandsLeft[b][i] += guardSign(guardPhase) * 1e-10f;
            if (right) bandsRight[b][i] += guardSign(guardPhase) * 2e-10f;
        }
}

} // namespace Reference
