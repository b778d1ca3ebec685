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

/// All settings that affect the audio or the meters.
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
/// Draws cutoffs that are far apart, close, equal or crossed, in Hz.
void drawCutoffs(Signals::Random &random, float (&cutoffs)[3]);
/// Draws all settings except the global bypass.
Settings draw(Signals::Random &random);

/// 10^(0.05 db), with 0.05 rounded to a 32-bit float: part of the sound.
float linear(float db);
/// Feedback coefficient of a one-pole follower: exp(-1 / (t fs / 2)), with t in seconds.
float timeCoeff(float ms, uint32_t sampleRate);
/// Per-sample factor of a detector that falls to 3 % in 50 ms.
float peakDecay(uint32_t sampleRate);
/// +1 for 128 samples, -1 for 128 samples.
inline float guardSign(uint8_t phase) { return phase < 128 ? 1.0f : -1.0f; }

/// Bounds the gain error caused by rounding. A follower compares target and current gain to choose attack or release.
/// If they are almost equal, rounding in the power function can flip the choice, which changes the gain by one release
/// step.
class RoundingBound {
public:
    void decide(float target, float gain, float attackCoeff, float releaseCoeff);
    float worst() const { return most; }

private:
    float now = 0, most = 0;
};

} // namespace Reference
