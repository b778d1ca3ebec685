#pragma once
#include <algorithm>

#include "PluginBase/Util/AlignedBuffer.h"

namespace DSP {

/// Past samples laid out in a row, so that block code reads any delay with one pointer. New samples are
/// written at `write`; the row is moved back to its start only when it is full.
/// Thread  one at a time; reserve() allocates, resize() only beyond what was reserved, the others never
class DelayLine {
public:
    /// Allocates for resize() with these lengths. Keeps the samples.
    void reserve(uint32_t history, uint32_t mostFrames)
    {
        line.grow(capacityFor(history, mostFrames) + kOverrun);
    }
    /// Holds `history` samples of the past, all of them `past`, and takes blocks of up to `mostFrames`.
    void resize(uint32_t history, uint32_t mostFrames, float past = 0.0f)
    {
        reserve(history, mostFrames);
        length = history; // only after reserve(), which may throw
        capacity = capacityFor(history, mostFrames);
        clear(past);
    }
    void clear(float past = 0.0f)
    {
        position = length;
        std::fill_n(line.data(), length, past);
    }
    /// Where the next `frames` samples go; `length` older ones stand before it.
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
    static constexpr uint32_t kOverrun = 8; // a vector pass may touch so many samples behind a block

    Util::AlignedBuffer<float> line;
    uint32_t length = 0, capacity = 0, position = 0;
};

} // namespace DSP
