#include "dsp/stages/SlidingMinimum.h"

#include <algorithm>

#include "dsp/kernels/Kernels.h"

namespace DSP {

void SlidingMinimum::clear()
{
    fillLadder();
    line.fill(1.0f);
    position = placesLeft = 0;
    ladderInUse = false;
}

void SlidingMinimum::fillLadder()
{
    for (auto &tail : ladder.tails) std::fill(std::begin(tail), std::end(tail), 1.0f);
}

void SlidingMinimum::run(float *values, uint32_t frames)
{
    ladderInUse = true;
    Kernels::active().maximizer.slidingMinimum(ladder, values, frames);
    for (uint32_t i = 0; i < frames && placesLeft > 0; ++i, --placesLeft) {
        float &held = line[(position + i) % kWindow];
        values[i] = std::min(values[i], held);
        held = 1.0f;
    }
    position = (position + frames) % kWindow;
}

void SlidingMinimum::skip(uint32_t frames)
{
    if (ladderInUse) writeLine();
    position = (position + frames) % kWindow;
}

void SlidingMinimum::writeLine()
{
    // The value to be returned after j more samples was last reset 199 - j samples ago.
    for (uint32_t j = 0; j < kWindow - 1; ++j) {
        float &held = line[(position + j) % kWindow];
        held = std::min(held, leastOfLast(kWindow - 1 - j));
    }
    placesLeft = kWindow;
    fillLadder();
    ladderInUse = false;
}

float SlidingMinimum::leastOfLast(uint32_t count) const
{
    uint32_t step = 0;
    while (step + 1 < Kernels::MinimumLadder::kSteps && 2u << step <= count) ++step;
    const uint32_t newest = Kernels::MinimumLadder::kTail[step] - 1;
    return std::min(ladder.tails[step][newest], ladder.tails[step][newest - (count - (1u << step))]);
}

} // namespace DSP
