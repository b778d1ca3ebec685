#include "apps/tessarine/files/Block.h"

#include <algorithm>

namespace App {

Block::Block(uint32_t channelCount, uint32_t frames)
    : channels(channelCount), interleaved(size_t{frames} * channelCount), left(frames), right(frames)
{
}

uint32_t Block::read(AudioReader &reader, uint32_t frames)
{
    const uint32_t got = reader.read(interleaved.data(), frames);
    std::fill(interleaved.begin() + ptrdiff_t{got} * channels,
              interleaved.begin() + ptrdiff_t{frames} * channels, 0.0f);
    return got;
}

void Block::separate(uint32_t frames)
{
    for (uint32_t i = 0; i < frames; ++i) {
        left[i] = interleaved[size_t{i} * channels];
        if (channels == 2) right[i] = interleaved[size_t{i} * 2 + 1];
    }
}

void Block::interleave(uint32_t frames)
{
    for (uint32_t i = 0; i < frames; ++i) {
        interleaved[size_t{i} * channels] = left[i];
        if (channels == 2) interleaved[size_t{i} * 2 + 1] = right[i];
    }
}

uint32_t framesToSkip(uint64_t skip, uint64_t begin, uint32_t frames)
{
    return static_cast<uint32_t>(std::min<uint64_t>(frames, skip - std::min(skip, begin)));
}

} // namespace App
