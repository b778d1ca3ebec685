#pragma once
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

constexpr uint32_t kImpulseBlock = 4096; // frames, the block of the layout that impulseResponse needs

/// What the started effect answers to one sample of full scale on all channels: the first `frames` samples of
/// the left output, delay included.
std::vector<float> impulseResponse(EffectHost &host, uint32_t frames);

} // namespace App
