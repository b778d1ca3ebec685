#pragma once
#include <algorithm>
#include <array>
#include <vector>

#include "tests/signals/Signals.h"

/// Cuts `frames` into the blocks of a host: one size, or an irregular mix.
inline std::vector<uint32_t> cutIntoBlocks(Signals::Random &random, uint32_t frames)
{
    constexpr std::array sizes = {1u, 7u, 64u, 441u, 512u, 4096u, 16384u};
    const bool mixed = random.chance(0.4);
    const uint32_t steady = random.pick(sizes);
    std::vector<uint32_t> blocks;
    while (frames != 0) {
        const uint32_t wanted = mixed ? 1 + random.below(random.pick(sizes)) : steady;
        blocks.push_back(std::min(wanted, frames));
        frames -= blocks.back();
    }
    return blocks;
}

inline uint32_t drawRate(Signals::Random &random)
{
    return random.pick(std::array{8000u, 11025u, 16000u, 22050u, 44100u, 48000u, 96000u, 192000u});
}
