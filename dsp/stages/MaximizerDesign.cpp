#include "dsp/stages/MaximizerDesign.h"

#include <algorithm>
#include <cmath>

#include "dsp/numerics/Conversions.h"

namespace DSP {

namespace {

// A time constant of 100 samples at every sample rate: part of the sound; see SameBitsTest.
float brickwallAttackCoeff()
{
    constexpr double kRateHz = 44100.0, kTwiceSamplesMs = 200000.0;
    static const auto coeff = static_cast<float>(Math::timeCoeff(kTwiceSamplesMs / kRateHz, kRateHz));
    return coeff;
}

uint32_t lookAheadOf(float attackMs, uint32_t sampleRateHz)
{
    const double attack = std::floor(sampleRateHz * static_cast<double>(attackMs) * 0.001 + 0.5);
    return static_cast<uint32_t>(
        std::clamp<double>(kMaximizerWindow / 2 + attack, kMaximizerWindow, kMaximizerOutputDelay - 1));
}

} // namespace

MaximizerCoefficients design(const MaximizerSettings &settings, uint32_t sampleRateHz)
{
    const float attack = settings.brickwall
                             ? brickwallAttackCoeff()
                             : static_cast<float>(Math::timeCoeff(settings.attackMs, sampleRateHz));
    const auto release = static_cast<float>(Math::timeCoeff(settings.releaseMs, sampleRateHz));
    const float smoothSamples = 0.001f * static_cast<float>(sampleRateHz);
    return {.threshold = thresholdFactor(settings.thresholdDb),
            .outputGain = gainFactor(settings.marginDb - settings.thresholdDb),
            .envelopeDecay = peakDecay(sampleRateHz),
            .smoothCoeff = static_cast<float>(1.0 - Math::exp(-1.0 / smoothSamples)),
            .follower = {attack, 1.0f - attack, release, 1.0f - release},
            .lookAhead = lookAheadOf(settings.attackMs, sampleRateHz),
            .bypass = settings.bypass,
            .brickwall = settings.brickwall};
}

} // namespace DSP
