#include "tests/reference/Maximizer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Reference {

static constexpr uint32_t kInput = 64, kOutput = 200, kWindow = 64;

void Maximizer::setSampleRate(uint32_t hz)
{
    sampleRate = hz;
    envelope = 0;
    followedGain = 1;
    gainRing.assign(kWindow, 1.0f);
}

void Maximizer::reset()
{
    envelope = 0;
    followedGain = smoothedGain = reportedGain = 1;
    for (int channel = 0; channel < 2; ++channel) {
        inputDelay[channel].assign(kInput, 0.0f);
        outputDelay[channel].assign(kOutput, 0.0f);
    }
    gainLine.assign(kOutput, 1.0f);
    gainRing.assign(kWindow, 1.0f);
    inputPosition = outputPosition = gainRingPosition = 0;
}

float Maximizer::readGainReduction() { return std::exchange(reportedGain, 1.0f); }

Maximizer::Coefficients Maximizer::coefficients() const
{
    const double attack = std::floor(sampleRate * static_cast<double>(settings.attackMs) * 0.001 + 0.5);
    return {
        .threshold = linear(settings.thresholdDb),
        .outputGain = linear(settings.marginDb - settings.thresholdDb),
        .attack = timeCoeff(settings.attackMs, sampleRate),
        .release = timeCoeff(settings.releaseMs, sampleRate),
        .smooth = static_cast<float>(1 - std::exp(-1.0 / (0.001f * static_cast<float>(sampleRate)))),
        .peakDecay = peakDecay(sampleRate),
        .lookAhead = static_cast<uint32_t>(std::clamp(kWindow / 2 + attack, 64.0, 199.0)),
    };
}

void Maximizer::follow(float target, float attack, float release)
{
    if (target < followedGain)
        followedGain = target * (1 - attack) + attack * followedGain;
    else
        followedGain = release * followedGain + (1 - release);
}

/// Returns the gain of the next output sample.
float Maximizer::soft(const Coefficients &c)
{
    float target = 1;
    if (envelope >= c.threshold)
        target = static_cast<float>(std::pow(static_cast<double>(envelope / c.threshold), 0.05f - 1.0));
    rounding.decide(target, followedGain, c.attack, c.release);
    follow(target, c.attack, c.release);

    const float difference = followedGain - smoothedGain;
    if (std::fabs(difference) > 1e-9f)
        smoothedGain += difference * c.smooth;
    else
        smoothedGain = followedGain;
    return smoothedGain;
}

static float windowWeight(uint32_t k)
{
    return static_cast<float>((1 - std::cos((k + 0.5) * 6.283185307179586 / kWindow)) / kWindow);
}

/// Returns the gain of the sample `lookAhead` samples before the newest.
float Maximizer::brickwall(const Coefficients &c)
{
    const float target = envelope < c.threshold ? 1.0f : c.threshold / envelope;
    for (float &gain : gainLine) gain = std::min(gain, target);
    const float least = std::exchange(gainLine[outputPosition], 1.0f);
    follow(least, static_cast<float>(std::exp(-0.01)), c.release);
    followedGain = std::min(followedGain, least);

    static const std::vector<float> window = [] {
        std::vector<float> weights;
        for (uint32_t k = 0; k < kWindow; ++k) weights.push_back(windowWeight(k));
        return weights;
    }();
    gainRing[gainRingPosition] = followedGain;
    double sum = 0;
    for (uint32_t k = 0; k < kWindow; ++k)
        sum += static_cast<double>(gainRing[(gainRingPosition + k) % kWindow]) * window[k];
    gainRingPosition = (gainRingPosition + 1) % kWindow;
    return smoothedGain = static_cast<float>(sum);
}

void Maximizer::process(uint32_t frames, float *left, float *right)
{
    const Coefficients c = coefficients();
    const uint32_t channels = right ? 2 : 1;
    float *const samples[] = {left, right};
    for (uint32_t i = 0; i < frames; ++i) {
        float delayed[2] = {}, level = 0;
        for (uint32_t channel = 0; channel < channels; ++channel) {
            inputDelay[channel][inputPosition] = samples[channel][i];
            delayed[channel] = inputDelay[channel][(inputPosition + 1) % kInput];
            level = std::max(level, std::fabs(delayed[channel]));
        }
        inputPosition = (inputPosition + 1) % kInput;
        envelope = level >= envelope ? level : std::max(c.peakDecay * envelope, level);

        const float gain = settings.brickwall ? brickwall(c) : soft(c);
        const float factor = settings.bypass ? 1.0f : c.outputGain * gain;
        if (!settings.bypass) reportedGain = std::min(reportedGain, gain);

        const uint32_t scaled = (outputPosition + kOutput - c.lookAhead) % kOutput;
        const uint32_t oldest = (outputPosition + 1) % kOutput;
        for (uint32_t channel = 0; channel < channels; ++channel) {
            std::vector<float> &line = outputDelay[channel];
            line[outputPosition] = delayed[channel];
            if (settings.brickwall) line[scaled] *= factor;
            samples[channel][i] = settings.brickwall ? line[oldest] : factor * line[oldest];
        }
        outputPosition = oldest;
    }
}

} // namespace Reference
