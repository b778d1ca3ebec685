#pragma once
#include <algorithm>
#include <cstdint>
#include <optional>

#include "dsp/automation/EnvelopeHandler.h"
#include "dsp/component/Bands.h"

namespace DSP {

/// One block of samples. Stages process it in place.
struct Block {
    uint32_t frames;
    float *left, *right;             // right is null for mono
    std::optional<Bands> bands = {}; // for stages that process all bands together

    /// Returns `count` frames of the block, starting at `first`.
    Block part(uint32_t first, uint32_t count) const
    {
        const auto at = [first](float *samples) { return samples ? samples + first : nullptr; };
        Block piece = {count, at(left), at(right), bands};
        if (piece.bands)
            for (int b = 0; b < kBands; ++b) {
                piece.bands->left[b] = at(bands->left[b]);
                piece.bands->right[b] = at(bands->right[b]);
            }
        return piece;
    }
};

/// Time of a block, and the resolution of its automation.
struct Now {
    uint32_t rate; // Hz
    int64_t time;  // first sample, in units of 100 ns
    uint32_t step; // samples between two automation values

    Now after(uint32_t frames) const
    {
        return {rate, time + int64_t{frames} * kUnitsPerSecond / std::max(rate, 1u), step};
    }
};

} // namespace DSP
