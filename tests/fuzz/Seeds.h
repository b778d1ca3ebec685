#pragma once
#include <cstring>
#include <vector>

/// An input is a row of numbers, each of which decides a whole step: so the search changes, joins and shortens rows
/// of steps, and every input means something.
inline std::vector<uint32_t> seedsOf(const uint8_t *data, size_t size)
{
    std::vector<uint32_t> seeds;
    for (uint32_t seed; size >= sizeof seed; data += sizeof seed, size -= sizeof seed) {
        std::memcpy(&seed, data, sizeof seed);
        seeds.push_back(seed);
    }
    return seeds;
}
