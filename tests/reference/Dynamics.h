#pragma once
#include <cstdint>
#include <vector>

#include "tests/reference/Settings.h"

namespace Reference {

/// The compressors of four bands, in 32-bit floats.
class Dynamics {
public:
    Dynamics();
    void set(int band, const BandSettings &settings) { bands[band].settings = settings; }
    void setSampleRate(uint32_t hz);
    void reset();
    /// In place; `right` is null for mono.
    void process(int band, uint32_t frames, float *left, float *right);
    float readGainReduction(int band);
    void readPeaks(int band, float &left, float &right);
    float roundingBound() const { return rounding.worst(); }
    uint32_t latency() const { return lookAhead() - 1; }

private:
    struct Band {
        BandSettings settings;
        float peakLeft = 0, peakRight = 0, envelope = 0;
        float followedGain = 1, smoothedGain = 1, reportedGain = 1;
        std::vector<float> delayLeft, delayRight;
        uint32_t delayPosition = 0;
        uint8_t guardPhase = 0;
    };
    uint32_t lookAhead() const;

    uint32_t sampleRate = 44100;
    Band bands[4];
    RoundingBound rounding;
};

} // namespace Reference
