#include "tests/reference/Settings.h"

#include <algorithm>
#include <cmath>

namespace Reference {

using Signals::Random;

/// Random value from `low` to `high`; both ends are likely.
static float value(Random &random, float low, float high)
{
    switch (random.below(8)) {
    case 0: return low;
    case 1: return high;
    default: return random.real(low, high);
    }
}

BandSettings drawBand(Random &random)
{
    BandSettings band;
    band.thresholdDb = value(random, -60, 0);
    band.gainDb = value(random, -18, 18);
    band.ratio = random.chance(0.2) ? 1.0f : value(random, 1.1f, 30);
    band.attackMs = random.chance(0.5) ? value(random, 0, 500) : value(random, 0, 20);
    band.releaseMs = random.chance(0.5) ? value(random, 0, 5000) : value(random, 0, 200);
    band.bypass = random.chance(0.1);
    band.solo = random.chance(0.05);
    return band;
}

static MaximizerSettings drawMaximizer(Random &random)
{
    MaximizerSettings maximizer;
    maximizer.thresholdDb = value(random, -20, 0);
    maximizer.marginDb = value(random, -5, 0);
    maximizer.attackMs = value(random, 1, 20);
    maximizer.releaseMs = value(random, 10, 500);
    maximizer.bypass = random.chance(0.1);
    maximizer.brickwall = random.chance(0.5);
    return maximizer;
}

static SpectrumSettings drawSpectrum(Random &random)
{
    return {random.chance(0.5), random.below(5), random.below(6), random.below(5)};
}

void drawCutoffs(Random &random, float (&cutoffs)[3])
{
    const auto anywhere = [&] { return static_cast<float>(20 * std::pow(1000.0, random.uniform(0, 1))); };
    for (float &cutoff : cutoffs) cutoff = anywhere();
    if (random.chance(0.1)) return; // unsorted
    std::sort(cutoffs, cutoffs + 3);
    if (random.chance(0.2)) cutoffs[1] = cutoffs[0];
    if (random.chance(0.2)) cutoffs[2] = cutoffs[1] * 1.01f;
}

Settings draw(Random &random)
{
    Settings settings;
    drawCutoffs(random, settings.cutoffs);
    for (int b = 0; b < 4; ++b) {
        settings.bandBypass[b] = random.chance(0.1);
        settings.bandMute[b] = random.chance(0.1);
        settings.bands[b] = drawBand(random);
        settings.spectra[b] = drawSpectrum(random);
    }
    if (random.chance(0.05)) std::fill_n(settings.bandBypass, 4, true);
    if (random.chance(0.05)) std::fill_n(settings.bandMute, 4, true);
    settings.maximizer = drawMaximizer(random);
    settings.gainDb = value(random, -18, 18);
    settings.processAsMono = random.chance(0.1);
    return settings;
}

static constexpr double kTwentieth = 0.05f;

float linear(float db) { return static_cast<float>(std::pow(10.0, db * kTwentieth)); }

float timeCoeff(float ms, uint32_t sampleRate)
{
    if (ms <= 0) return 0;
    return static_cast<float>(std::exp((-1000.0 / ms) / (sampleRate * 0.5)));
}

float peakDecay(uint32_t sampleRate)
{
    return static_cast<float>(std::pow(static_cast<double>(0.03f), 1.0 / (sampleRate * 0.05)));
}

void RoundingBound::decide(float target, float gain, float attackCoeff, float releaseCoeff)
{
    now *= target < gain ? attackCoeff : releaseCoeff;
    if (std::fabs(target - gain) <= 1e-6f * gain) now += (1 - gain) * (1 - releaseCoeff);
    most = std::max(most, now);
}

} // namespace Reference
