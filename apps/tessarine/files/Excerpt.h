#pragma once
#include <algorithm>
#include <cstdint>

namespace App {

/// A part of a file in frames.
struct Excerpt {
    uint64_t start = 0, length = 0;

    /// Frames to process before the start, so that envelopes and filters are the same as in the whole file.
    uint64_t preRoll(uint32_t rate) const { return std::min<uint64_t>(start, uint64_t{10} * rate); }
};

} // namespace App
