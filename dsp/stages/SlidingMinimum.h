#pragma once
#include <array>

#include "dsp/kernels/MaximizerKernels.h"

namespace DSP {

/// Sliding minimum of the brickwall limiter: replaces each gain with the smallest of the last 200.
/// Shape   equivalent to a ring buffer of 200 values. run() lowers larger values to the input, returns the value at
///         `position`, resets it to 1 and advances. skip() only advances, so after a change of limiter mode
///         the window can be longer or shorter than 200 samples
/// Unit    linear gain, 0 to 1
/// Cost    eight vector minima per sample for any signal, and one pass over the buffer per change of mode
/// Thread  audio, no allocation
class SlidingMinimum {
public:
    static constexpr uint32_t kWindow = Kernels::MinimumLadder::kWindow;

    SlidingMinimum() { clear(); }
    void clear();
    /// In place, up to MaximizerKernels::kMostFrames values, 32-byte aligned.
    void run(float *values, uint32_t frames);
    /// Advances by `frames` samples without input.
    void skip(uint32_t frames);

private:
    void fillLadder();
    /// Rebuilds `line` from the ladder, as far back as the ladder reaches.
    void writeLine();
    float leastOfLast(uint32_t count) const;

    Kernels::MinimumLadder ladder;   // minima of the input since the last writeLine
    std::array<float, kWindow> line; // minima from before the last writeLine; 1 once returned
    uint32_t position = 0;           // next index to return
    uint32_t placesLeft = 0;         // values in `line` that are not returned yet
    bool ladderInUse = false;
};

} // namespace DSP
