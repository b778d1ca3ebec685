#pragma once
#include <array>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

constexpr uint32_t kImpulseBlock = 4096; // frames, the block of the layout that impulseResponse needs

/// What the started effect answers to one sample of full scale on all channels: the first `frames` samples of
/// the left output, delay included.
std::vector<float> impulseResponse(EffectHost &host, uint32_t frames);

/// Frequency response of the effect as it stands in the linear range: compressors at 1:1, limiter bypassed.
struct Response {
    std::vector<double> frequencies;                    // Hz, evenly spaced in octaves
    std::array<std::vector<double>, DSP::kBands> bands; // dB, each alone
    std::vector<double> sum;                            // dB, of all that are not muted
    std::array<double, DSP::kCutoffs> cutoffs{};        // Hz

    struct Extreme {
        double db, frequency; // Hz
    };
    Extreme lowest() const;
    Extreme highest() const;
};

/// Sends impulses through the effect at `rate` Hz, once with all bands and once for each of them.
/// Errors  Failure for settings that applySettings refuses
Response measureResponse(uint32_t rate, const std::vector<std::string> &settings);

} // namespace App
