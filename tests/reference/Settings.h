#pragma once
#include <cstdint>

#include "tests/signals/Signals.h"

namespace Reference {

struct BandSettings {
    float thresholdDb = 0, gainDb = 0, ratio = 1, attackMs = 10, releaseMs = 100;
    bool bypass = false, solo = false;
};

struct MaximizerSettings {
    float thresholdDb = 0, marginDb = 0, attackMs = 4, releaseMs = 500;
    bool bypass = false, brickwall = false;
};

struct SpectrumSettings {
    bool onInput = false;
    uint32_t size = 3, overlap = 5, window = 4;
};

/// Every setting that reaches the audio or the meters.
struct Settings {
    float cutoffs[3] = {120, 2000, 10000};
    bool bandBypass[4] = {}, bandMute[4] = {};
    BandSettings bands[4];
    MaximizerSettings maximizer;
    float gainDb = 0;
    SpectrumSettings spectra[4];
    bool processAsMono = false, bypass = false;
};

BandSettings drawBand(Signals::Random &random);
/// Cutoffs far apart, close, equal or crossed.
void drawCutoffs(Signals::Random &random, float (&cutoffs)[3]);
/// All but global bypass; a tenth of the switches is on.
Settings draw(Signals::Random &random);

/// 10^(dB / 20), with the factor 0.05 as a 32-bit float.
float linear(float db);
/// Feedback of a one-pole follower, with half the sample rate.
float timeCoeff(float ms, uint32_t sampleRate);
/// Per-sample factor of a detector that falls to 3 % in 50 ms.
float peakDecay(uint32_t sampleRate);
/// +1 for 128 samples, -1 for 128 samples.
inline float guardSign(uint8_t phase) { return phase < 128 ? 1.0f : -1.0f; }

/// Attack or release is decided by comparing a target gain with the present one. Where the two agree to their
/// last places, a rounding of the power function decides, and the gains differ by a step of the release from
/// then on. This bounds by how much.
class Doubt {
public:
    void decide(float target, float gain, float attackCoeff, float releaseCoeff);
    float worst() const { return most; }

private:
    float now = 0, most = 0;
};

} // namespace Reference
