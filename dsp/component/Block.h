#pragma once
#include <algorithm>
#include <cstdint>
#include <optional>

#include "dsp/component/Bands.h"

namespace DSP {

/// One block of samples on its way through the chain. Stages change it in place.
struct Block {
    uint32_t frames;
    float *left, *right;             // right is null for mono
    std::optional<Bands> bands = {}; // for the stages that work on all bands at once

    /// `count` frames of it from `first` on.
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

/// When a block plays, and how finely automation cuts it.
struct Now {
    uint32_t rate; // Hz
    int64_t time;  // of the first sample, 100 ns
    uint32_t step; // samples between two values of an envelope

    Now after(uint32_t frames) const
    {
        return {rate, time + int64_t{frames} * 10000000 / std::max(rate, 1u), step};
    }
};

} // namespace DSP
