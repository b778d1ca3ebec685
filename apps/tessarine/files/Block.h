#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "apps/tessarine/files/AudioReader.h"

namespace App {

/// One block of audio, both interleaved as in files and with separate channels as in the effect.
struct Block {
    Block(uint32_t channelCount, uint32_t frames);
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

    /// Reads the next frames into `interleaved` and returns the number of frames read. Pads with silence
    /// after the end of the file, which flushes the effect's delay.
    uint32_t read(AudioReader &reader, uint32_t frames);
    /// Copies `interleaved` to `left` and `right`.
    void separate(uint32_t frames);
    /// Copies `left` and `right` to `interleaved`.
    void interleave(uint32_t frames);
    const float *from(uint32_t frame) const { return interleaved.data() + size_t{frame} * channels; }

    const uint32_t channels;
    std::vector<float> interleaved, left, right; // mono: `right` is silent
    float *const sides[2] = {left.data(), right.data()};
};

/// Number of frames to drop from a block of `frames` frames that starts at frame `begin` of the signal, if
/// the first `skip` frames of the signal are dropped.
uint32_t framesToSkip(uint64_t skip, uint64_t begin, uint32_t frames);

} // namespace App
