#include "tests/reference/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace Reference {

using Signal = std::vector<std::complex<double>>;

static Signal fourier(const Signal &x)
{
    const size_t n = x.size();
    if (n == 1) return x;
    Signal even(n / 2), odd(n / 2);
    for (size_t i = 0; i < n; ++i) (i % 2 ? odd : even)[i / 2] = x[i];
    even = fourier(even);
    odd = fourier(odd);
    Signal result(n);
    for (size_t k = 0; k < n / 2; ++k) {
        const auto turned = std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(k) / n) * odd[k];
        result[k] = even[k] + turned;
        result[k + n / 2] = even[k] - turned;
    }
    return result;
}

static double window(uint32_t type, double n, double length)
{
    const double last = length - 1, angle = 2 * std::numbers::pi * n / last;
    switch (type) {
    case 0: return 0.54 - 0.46 * std::cos(angle);
    case 1: return 0.42 - 0.5 * std::cos(angle) + 0.08 * std::cos(2 * angle);
    case 2: return 1 - std::fabs(2 * n / last - 1);
    case 3:
        return std::cyl_bessel_i(0.0, 0.006 * std::sqrt(n * (last - n))) /
               std::cyl_bessel_i(0.0, 0.003 * last);
    default: return 0.5 - 0.5 * std::cos(angle);
    }
}

uint32_t Spectrum::overlapLength() const
{
    constexpr float factors[] = {0.0f, 0.1f, 0.2f, 0.3f, 0.4f, 0.5f};
    return static_cast<uint32_t>(static_cast<double>(size()) * factors[settings.overlap]);
}

void Spectrum::set(const SpectrumSettings &next)
{
    const bool same =
        next.size == settings.size && next.overlap == settings.overlap && next.window == settings.window;
    settings = next;
    if (!same) rebuild();
}

void Spectrum::setSampleRate(uint32_t hz)
{
    if (hz == sampleRate) return;
    sampleRate = hz;
    SpectrumSettings next = settings;
    next.size = hz < 11000 ? 0 : hz < 22000 ? 1 : hz < 38000 ? 2 : 3;
    set(next);
}

void Spectrum::reset() { std::fill(frame.begin(), frame.end(), 0.0f); }

void Spectrum::rebuild()
{
    frame.clear();
    pending.clear();
    magnitudes.assign(size() / 2 + 1, 0.0f);
    hasNewData = true;
    weights.clear();
    for (uint32_t i = 0; i < size(); ++i)
        weights.push_back(static_cast<float>(window(settings.window, i, size())));
}

void Spectrum::feed(uint32_t frames, const float *left, const float *right)
{
    for (uint32_t i = 0; i < frames; ++i) {
        const float mix = right ? (left[i] + right[i]) * 0.5f : left[i];
        frame.push_back(mix - guardSign(guardPhase++) * 1e-10f);
        if (!pending.empty() && untilAnalysis-- == 1) analyse();
        if (frame.size() < size()) continue;
        pending = frame;
        frame.erase(frame.begin(), frame.end() - overlapLength());
        untilAnalysis = stagger;
        if (stagger == 0) analyse();
    }
}

void Spectrum::analyse()
{
    if (wasRead) {
        const double hop = size() - overlapLength();
        const auto decay =
            static_cast<float>(std::pow(10.0, hop * 120.0 * -static_cast<double>(0.05f) / sampleRate));
        for (float &magnitude : magnitudes) magnitude *= decay;
        wasRead = false;
    }
    Signal windowed;
    for (uint32_t i = 0; i < size(); ++i) windowed.push_back(pending[i] * weights[i]);
    const Signal bins = fourier(windowed);
    for (uint32_t k = 0; k <= size() / 2; ++k)
        magnitudes[k] = std::max(magnitudes[k], static_cast<float>(std::abs(bins[k]) * 2 / size()));
    pending.clear();
    hasNewData = true;
}

std::optional<std::vector<float>> Spectrum::read()
{
    if (!hasNewData) return std::nullopt;
    hasNewData = false;
    wasRead = true;
    return magnitudes;
}

} // namespace Reference
