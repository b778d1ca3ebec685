#pragma once
#include <algorithm>

#include "PluginBase/Util/AlignedBuffer.h"

namespace DSP {

/// Delay line whose history is contiguous in memory, so that block code reads any delay through one pointer.
/// The history moves back to the start of the buffer only when the buffer is full.
/// Thread  one at a time; reserve() allocates, resize() only beyond the reserved size, the others never
class DelayLine {
public:
    /// Allocates memory for a later resize() to these lengths. Keeps the samples.
    void reserve(uint32_t history, uint32_t mostFrames)
    {
        line.grow(capacityFor(history, mostFrames) + kOverrun);
    }
    /// Sets the history to `history` samples, all equal to `past`, and the longest block to `mostFrames`.
    void resize(uint32_t history, uint32_t mostFrames, float past = 0.0f)
    {
        reserve(history, mostFrames);
        length = history; // after reserve(), which may throw
        capacity = capacityFor(history, mostFrames);
        clear(past);
    }
    void clear(float past = 0.0f)
    {
        position = length;
        std::fill_n(line.data(), length, past);
    }
    /// Returns where to write the next `frames` samples; the history lies directly before that address.
    float *write(uint32_t frames)
    {
        if (position + frames > capacity) {
            std::copy_n(line.data() + position - length, length, line.data());
            position = length;
        }
        float *const here = line.data() + position;
        position += frames;
        return here;
    }
    uint32_t history() const { return length; }

private:
    static constexpr uint32_t kBlocksBetweenMoves = 8;
    static constexpr uint32_t capacityFor(uint32_t history, uint32_t mostFrames)
    {
        return history + kBlocksBetweenMoves * mostFrames;
    }
    static constexpr uint32_t kOverrun = 8; // samples that a vector pass may touch after a block

    Util::AlignedBuffer<float> line;
    uint32_t length = 0, capacity = 0, position = 0;
};

} // namespace DSP
