#pragma once
#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

#include "tests/signals/Signals.h"

/// Number of seeds of a randomised test; ten times `usual` if TESSARINE_LONG_TESTS is set.
inline int seedCount(int usual) { return std::getenv("TESSARINE_LONG_TESTS") ? 10 * usual : usual; }

/// Splits `frames` into blocks of one size or of random sizes. After 1000 blocks the block size is 4096, which limits
/// the time of a test.
inline std::vector<uint32_t> cutIntoBlocks(Signals::Random &random, uint32_t frames)
{
    constexpr std::array sizes = {1u, 7u, 64u, 441u, 512u, 4096u, 16384u};
    const bool mixed = random.chance(0.4);
    const uint32_t steady = random.pick(sizes);
    std::vector<uint32_t> blocks;
    while (frames != 0) {
        uint32_t wanted = mixed ? 1 + random.below(random.pick(sizes)) : steady;
        if (blocks.size() >= 1000) wanted = 4096;
        blocks.push_back(std::min(wanted, frames));
        frames -= blocks.back();
    }
    return blocks;
}

/// Returns a common rate, or one where the FFT size of the spectra changes, in Hz.
inline uint32_t drawRate(Signals::Random &random)
{
    return random.pick(
        std::array{8000u, 10999u, 11000u, 21999u, 22000u, 37999u, 44100u, 48000u, 96000u, 192000u});
}
