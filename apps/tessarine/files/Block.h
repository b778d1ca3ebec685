#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "apps/tessarine/files/AudioReader.h"

namespace App {

/// One block in both layouts: files have the channels side by side, the effect has them apart.
struct Block {
    Block(uint32_t channelCount, uint32_t frames);
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

    /// The next frames of the file into `interleaved`; behind its end follows silence, which pushes the last
    /// samples out of the effect. Returns how many came from the file.
    uint32_t read(AudioReader &reader, uint32_t frames);
    void separate(uint32_t frames);
    void interleave(uint32_t frames);
    const float *from(uint32_t frame) const { return interleaved.data() + size_t{frame} * channels; }

    const uint32_t channels;
    std::vector<float> interleaved, left, right; // right stays silent in mono
    float *const sides[2] = {left.data(), right.data()};
};

/// How many of `frames`, of which the first is number `begin` of the signal, belong to its first `skip`.
uint32_t framesToSkip(uint64_t skip, uint64_t begin, uint32_t frames);

} // namespace App
