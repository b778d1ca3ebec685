#include "dsp/stages/DynamicsDesign.h"

#include <algorithm>
#include <cmath>

#include "dsp/numerics/Conversions.h"

namespace DSP {

BandCoefficients design(const BandSettings &settings, uint32_t sampleRateHz)
{
    const auto attack = static_cast<float>(Math::timeCoeff(settings.attackMs, sampleRateHz));
    const auto release = static_cast<float>(Math::timeCoeff(settings.releaseMs, sampleRateHz));
    const double smoothMs = std::min(settings.attackMs, settings.releaseMs) * 0.5;
    return {.threshold = thresholdFactor(settings.thresholdDb),
            // at most 0: a ratio below 1 must not expand, because the release recovers towards a gain of 1
            .exponent = std::min(0.0f, 1.0f / settings.ratio - 1.0f),
            .attackComplement = 1.0f - attack,
            .releaseCoeff = release,
            .releaseComplement = 1.0f - release,
            .smoothCoeff = static_cast<float>(1.0 - Math::timeCoeff(smoothMs, sampleRateHz)),
            .makeUp = gainFactor(settings.gainDb),
            .bypass = settings.bypass,
            .solo = settings.solo};
}

uint32_t lookAheadSamples(uint32_t sampleRateHz)
{
    constexpr float kLookAheadSeconds = 0.001f;
    const double samples = std::floor(static_cast<double>(sampleRateHz) * kLookAheadSeconds + 0.5);
    return std::max(1u, static_cast<uint32_t>(samples));
}

} // namespace DSP
