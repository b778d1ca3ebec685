#include "dsp/meter/Level.h"

#include <algorithm>
#include <cmath>

#include "dsp/kernels/Kernels.h"

namespace DSP::Meter {

Level::Level(PluginLink &pluginLink) : ComponentImpl(pluginLink, "LevelMeter")
{
    owner = this;
    finishConstruction();
}

void Level::reset()
{
    left = {};
    right = {};
}

void Level::measure(uint32_t frames, const float *leftSamples, const float *rightSamples)
{
    left.measure(frames, leftSamples);
    if (rightSamples)
        right.measure(frames, rightSamples);
    else
        right = left;
}

void Level::Channel::measure(uint32_t frames, const float *samples)
{
    const float loudest = Kernels::active().block.peak(samples, frames);
    if (std::max(peak.load(), loudest) > held || holdCount + frames > kHoldSamples) {
        follow(frames, samples);
    } else { // the held peak does not change within this block
        if (loudest > peak) peak = loudest;
        holdCount += frames;
    }
}

void Level::Channel::follow(uint32_t frames, const float *samples)
{
    float newPeak = peak, newHeld = held;
    for (uint32_t i = 0; i < frames; ++i) {
        const float magnitude = std::fabs(samples[i]);
        if (magnitude > newPeak) newPeak = magnitude;
        if (newPeak > newHeld) {
            newHeld = newPeak;
            holdCount = 0;
        } else if (++holdCount > kHoldSamples) {
            newHeld = 0.0f;
            holdCount = 0;
        }
    }
    peak = newPeak;
    held = newHeld;
}

void Level::read(float &peakLeft, float &peakRight, float &heldLeft, float &heldRight)
{
    peakLeft = left.peak.exchange(0.0f);
    peakRight = right.peak.exchange(0.0f);
    heldLeft = left.held;
    heldRight = right.held;
}

} // namespace DSP::Meter
