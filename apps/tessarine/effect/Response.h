#pragma once
#include <array>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

constexpr uint32_t kImpulseBlock = 4096; // frames; EffectHost::Layout::blockFrames for impulseResponse

/// The first `frames` samples of the left output, including the delay, for a full-scale impulse on all
/// channels. The effect must be started.
std::vector<float> impulseResponse(EffectHost &host, uint32_t frames);

/// Frequency response of the effect with compressors at 1:1 and the limiter bypassed, so that it is linear.
struct Response {
    std::vector<double> frequencies;                    // Hz, logarithmically spaced
    std::array<std::vector<double>, DSP::kBands> bands; // dB, each band alone
    std::vector<double> sum;                            // dB, all bands that are not muted
    std::array<double, DSP::kCutoffs> cutoffs{};        // Hz

    struct Extreme {
        double db, frequency; // Hz
    };
    Extreme lowest() const;
    Extreme highest() const;
};

/// Measures impulse responses at `rate` Hz, once for all bands together and once for each band.
/// Errors  Failure if a setting is refused
Response measureResponse(uint32_t rate, const std::vector<std::string> &settings);

} // namespace App
