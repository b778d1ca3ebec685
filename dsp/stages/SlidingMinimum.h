#pragma once
#include <array>

#include "dsp/kernels/MaximizerKernels.h"

namespace DSP {

/// The hold of the brickwall limiter: for each gain the least of the last 200.
/// Shape   behaves as a line of 200 places: each sample that runs lowers all of them to its own value, takes
///         out the place whose turn it is and refills it with 1. Samples that pass without run (the other
///         mode of the limiter) move the turn on and leave the line alone, so places then hold spans of
///         other lengths
/// Unit    linear gain, 0 to 1
/// Cost    eight vector minima a sample on any signal; a change of mode costs one pass over the line
/// Thread  audio, no allocation
class SlidingMinimum {
public:
    static constexpr uint32_t kWindow = Kernels::MinimumLadder::kWindow;

    SlidingMinimum() { clear(); }
    void clear();
    /// In place, up to MaximizerKernels::kMostFrames values, 32-byte aligned.
    void run(float *values, uint32_t frames);
    /// `frames` samples pass without a value.
    void skip(uint32_t frames);

private:
    void fillLadder();
    /// Rebuilds `line` from the ladder, as far back as the ladder reaches.
    void writeLine();
    float leastOfLast(uint32_t count) const;

    Kernels::MinimumLadder ladder;   // minima of what has run since the line was last written
    std::array<float, kWindow> line; // what places held then; 1 once their turn has come
    uint32_t position = 0;           // the place whose turn is next
    uint32_t placesLeft = 0;         // places that still hold something from before
    bool ladderInUse = false;
};

} // namespace DSP
