#pragma once
#include <cstdint>
#include <cstring>
#include <vector>

/// Reads the input as a sequence of seeds. Each seed decides one step, so every input is valid, and the fuzzer can
/// change, join and shorten sequences of steps.
inline std::vector<uint32_t> seedsOf(const uint8_t *data, size_t size)
{
    std::vector<uint32_t> seeds;
    for (uint32_t seed; size >= sizeof seed; data += sizeof seed, size -= sizeof seed) {
        std::memcpy(&seed, data, sizeof seed);
        seeds.push_back(seed);
    }
    return seeds;
}
