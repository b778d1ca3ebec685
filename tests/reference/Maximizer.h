#pragma once
#include <cstdint>
#include <vector>

#include "tests/reference/Settings.h"

namespace Reference {

/// The output limiter in both modes. The sliding minimum lowers all of its 200 values for every sample.
class Maximizer {
public:
    Maximizer() { reset(); }
    void set(const MaximizerSettings &next) { settings = next; }
    void setSampleRate(uint32_t hz);
    void reset();
    /// In place; `right` is null for mono.
    void process(uint32_t frames, float *left, float *right);
    /// Returns the smallest gain since the last call, without the output gain.
    float readGainReduction();
    float roundingBound() const { return rounding.worst(); }

private:
    struct Coefficients {
        float threshold, outputGain, attack, release, smooth, peakDecay;
        uint32_t lookAhead;
    };
    Coefficients coefficients() const;
    void follow(float target, float attack, float release);
    float soft(const Coefficients &c);
    float brickwall(const Coefficients &c);

    uint32_t sampleRate = 44100;
    MaximizerSettings settings;
    float envelope = 0, followedGain = 1, smoothedGain = 1, reportedGain = 1;
    std::vector<float> inputDelay[2], outputDelay[2], gainLine, gainRing;
    RoundingBound rounding;
    uint32_t inputPosition = 0, outputPosition = 0, gainRingPosition = 0;
};

} // namespace Reference
