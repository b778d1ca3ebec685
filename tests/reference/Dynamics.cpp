#include "tests/reference/Dynamics.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Reference {

Dynamics::Dynamics() { reset(); }

uint32_t Dynamics::lookAhead() const
{
    return std::max(1u, static_cast<uint32_t>(std::floor(sampleRate * static_cast<double>(0.001f) + 0.5)));
}

void Dynamics::setSampleRate(uint32_t hz)
{
    sampleRate = hz; // the delay lines follow at the next reset
    for (Band &band : bands) {
        band.peakLeft = band.peakRight = 0;
        band.reportedGain = 1;
    }
}

void Dynamics::reset()
{
    for (Band &band : bands) {
        const BandSettings settings = band.settings;
        band = {};
        band.settings = settings;
        band.delayLeft.assign(lookAhead(), 0.0f);
        band.delayRight.assign(lookAhead(), 0.0f);
    }
}

float Dynamics::readGainReduction(int band) { return std::exchange(bands[band].reportedGain, 1.0f); }

void Dynamics::readPeaks(int band, float &left, float &right)
{
    left = std::exchange(bands[band].peakLeft, 0.0f);
    right = std::exchange(bands[band].peakRight, 0.0f);
}

void Dynamics::process(int index, uint32_t frames, float *left, float *right)
{
    Band &band = bands[index];
    const BandSettings &settings = band.settings;
    const bool anySolo = std::any_of(bands, bands + 4, [](const Band &b) { return b.settings.solo; });
    if (anySolo && !settings.solo) {
        for (uint32_t i = 0; i < frames; ++i) {
            const float sign = guardSign(band.guardPhase++);
            left[i] = sign * 1e-10f;
            if (right) right[i] = sign * 2e-10f;
        }
        return;
    }

    const float threshold = linear(settings.thresholdDb), makeUp = linear(settings.gainDb);
    const float inverseRatio = 1 / settings.ratio;
    const float attackComplement = 1 - timeCoeff(settings.attackMs, sampleRate);
    const float releaseCoeff = timeCoeff(settings.releaseMs, sampleRate),
                releaseComplement = 1 - releaseCoeff;
    const float shorter = std::min(settings.attackMs, settings.releaseMs) * 0.5f;
    float smoothCoeff = 1;
    if (shorter > 0) smoothCoeff = static_cast<float>(1 - std::exp((-1000.0 / shorter) / (sampleRate * 0.5)));
    const float decay = peakDecay(sampleRate);

    for (uint32_t i = 0; i < frames; ++i) {
        const float aL = std::fabs(left[i]), aR = right ? std::fabs(right[i]) : 0.0f;
        band.peakLeft = std::max(band.peakLeft, aL);
        band.peakRight = right ? std::max(band.peakRight, aR) : band.peakLeft;
        const float v = std::max(aL, aR);

        band.envelope = v > band.envelope ? v : decay * band.envelope;
        const float x = std::max(band.envelope, 1e-5f);
        float target = 1;
        if (x >= threshold && inverseRatio != 1.0f)
            target = static_cast<float>(
                std::pow(static_cast<double>(x / threshold), static_cast<double>(inverseRatio) - 1.0));
        rounding.decide(target, band.followedGain, 1 - attackComplement, releaseCoeff);
        if (target < band.followedGain)
            band.followedGain = (target - band.followedGain) * attackComplement + band.followedGain;
        else
            band.followedGain = releaseCoeff * band.followedGain + releaseComplement;

        band.delayLeft[band.delayPosition] = left[i];
        if (right) band.delayRight[band.delayPosition] = right[i];
        band.delayPosition = (band.delayPosition + 1) % static_cast<uint32_t>(band.delayLeft.size());

        band.smoothedGain = (band.followedGain - band.smoothedGain) * smoothCoeff + band.smoothedGain;
        if (settings.bypass)
            band.reportedGain = 1;
        else
            band.reportedGain = std::min(band.reportedGain, band.smoothedGain);

        const float factor = settings.bypass ? 1.0f : band.smoothedGain * makeUp;
        const float sign = guardSign(band.guardPhase++);
        left[i] = band.delayLeft[band.delayPosition] * factor + sign * 1e-10f;
        if (right) right[i] = band.delayRight[band.delayPosition] * factor + sign * 2e-10f;
    }
}

} // namespace Reference
