#pragma once
#include <cstdint>

namespace App {

/// Copies interleaved samples to one array per channel. Mono leaves `right` unchanged.
void separate(const float *interleaved, uint32_t channels, uint32_t frames, float *left, float *right);
/// Copies one array per channel to interleaved samples. Mono ignores `right`.
void interleave(const float *left, const float *right, uint32_t channels, uint32_t frames,
                float *interleaved);

/// Frames of a block.
struct FrameRange {
    uint32_t first, count;
};
/// The frames of a block of `frames` frames, starting at frame `position` of a signal, that lie in the range from
/// `begin` to before `end` of the signal.
FrameRange overlap(uint64_t position, uint32_t frames, uint64_t begin, uint64_t end);

} // namespace App
