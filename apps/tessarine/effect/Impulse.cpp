#include "apps/tessarine/effect/Impulse.h"

#include <algorithm>

namespace App {

std::vector<float> impulseResponse(EffectHost &host, uint32_t frames)
{
    std::vector<float> response, left(kImpulseBlock), right(kImpulseBlock);
    float *const channels[] = {left.data(), right.data()};
    while (response.size() < frames) {
        const float first = response.empty() ? 1.0f : 0.0f;
        for (std::vector<float> *side : {&left, &right}) {
            std::fill(side->begin(), side->end(), 0.0f);
            side->front() = first;
        }
        host.process(channels, channels, kImpulseBlock);
        response.insert(response.end(), left.begin(), left.end());
    }
    response.resize(frames);
    return response;
}

} // namespace App
