#include "apps/tessarine/files/Block.h"

#include <algorithm>
#include <cstddef>

namespace App {

void separate(const float *interleaved, uint32_t channels, uint32_t frames, float *left, float *right)
{
    if (channels == 1) {
        std::copy_n(interleaved, frames, left);
        return;
    }
    for (size_t i = 0; i < frames; ++i) {
        left[i] = interleaved[2 * i];
        right[i] = interleaved[2 * i + 1];
    }
}

void interleave(const float *left, const float *right, uint32_t channels, uint32_t frames, float *interleaved)
{
    if (channels == 1) {
        std::copy_n(left, frames, interleaved);
        return;
    }
    for (size_t i = 0; i < frames; ++i) {
        interleaved[2 * i] = left[i];
        interleaved[2 * i + 1] = right[i];
    }
}

FrameRange overlap(uint64_t position, uint32_t frames, uint64_t begin, uint64_t end)
{
    const uint64_t first = std::clamp(begin, position, position + frames);
    const uint64_t last = std::clamp(end, first, position + frames);
    return {static_cast<uint32_t>(first - position), static_cast<uint32_t>(last - first)};
}

} // namespace App
