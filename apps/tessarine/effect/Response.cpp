#include "apps/tessarine/effect/Response.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <numbers>
#include <optional>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/effect/EffectSetup.h"

namespace App {

namespace {

constexpr double kLowest = 20.0, kHighest = 20000.0; // Hz
constexpr int kPoints = 700;                         // about 70 per octave
/// Long enough for the impulse response of a filter at 20 Hz to decay to 1e-19.
constexpr double kResponseSeconds = 0.5;

std::vector<double> frequencyGrid(uint32_t rate)
{
    const double top = std::min(kHighest, rate * 0.499);
    std::vector<double> grid;
    for (int i = 0; i < kPoints; ++i)
        grid.push_back(kLowest * std::pow(top / kLowest, i / double{kPoints - 1}));
    return grid;
}

/// Magnitude in dB of the Fourier transform at one frequency.
double levelAt(const std::vector<float> &response, double cyclesPerSample)
{
    const double angle = -2.0 * std::numbers::pi * cyclesPerSample;
    const double stepRe = std::cos(angle), stepIm = std::sin(angle);
    double re = 1.0, im = 0.0, sumRe = 0.0, sumIm = 0.0;
    for (const float sample : response) {
        sumRe += static_cast<double>(sample) * re;
        sumIm += static_cast<double>(sample) * im;
        const double turned = re * stepRe - im * stepIm;
        im = re * stepIm + im * stepRe;
        re = turned;
    }
    return 10.0 * std::log10(std::max(sumRe * sumRe + sumIm * sumIm, 1e-30));
}

/// Sets response.cutoffs. Returns the levels in dB of the sum, or of `band` with all other bands muted.
std::vector<double> measureLevels(Response &response, uint32_t rate, const EffectSetup &setup,
                                  std::optional<uint32_t> band)
{
    const auto host = makeEffect({.rate = rate, .channels = 1, .blockFrames = kImpulseBlock}, setup);
    DSP::CrossOver &crossOver = *host->plugin().transformHandle().crossOver();
    for (uint32_t i = 0; i < DSP::kCutoffs; ++i)
        response.cutoffs[i] = static_cast<double>(crossOver.cutoff(i));
    for (uint32_t other = 0; band && other < DSP::kBands; ++other) {
        if (other != *band) crossOver.setBandMute(other, true);
    }
    host->start();
    const auto impulse = impulseResponse(*host, static_cast<uint32_t>(rate * kResponseSeconds));
    std::vector<double> result;
    for (const double frequency : response.frequencies) {
        stopIfInterrupted();
        result.push_back(levelAt(impulse, frequency / rate));
    }
    return result;
}

} // namespace

std::vector<float> impulseResponse(EffectHost &host, uint32_t frames)
{
    std::vector<float> response, left(kImpulseBlock), right(kImpulseBlock);
    float *const channels[] = {left.data(), right.data()};
    while (response.size() < frames) {
        const float first = response.empty() ? 1.0f : 0.0f;
        for (std::vector<float> *side : {&left, &right}) {
            std::fill(side->begin(), side->end(), 0.0f);
            side->front() = first;
        }
        host.process(channels, channels, kImpulseBlock);
        response.insert(response.end(), left.begin(), left.end());
    }
    response.resize(frames);
    return response;
}

Response::Extreme Response::lowest() const
{
    const auto at = static_cast<size_t>(std::min_element(sum.begin(), sum.end()) - sum.begin());
    return {sum[at], frequencies[at]};
}

Response::Extreme Response::highest() const
{
    const auto at = static_cast<size_t>(std::max_element(sum.begin(), sum.end()) - sum.begin());
    return {sum[at], frequencies[at]};
}

Response measureResponse(uint32_t rate, const std::vector<std::string> &settings)
{
    EffectSetup setup{.chunk = {}, .settings = settings};
    for (const char *linear :
         {"Limiter Bypass=on", "Band 1 Ratio=1", "Band 2 Ratio=1", "Band 3 Ratio=1", "Band 4 Ratio=1"})
        setup.settings.emplace_back(linear);
    Response response;
    response.frequencies = frequencyGrid(rate);
    response.sum = measureLevels(response, rate, setup, std::nullopt);
    for (uint32_t band = 0; band < DSP::kBands; ++band)
        response.bands[band] = measureLevels(response, rate, setup, band);
    return response;
}

} // namespace App
