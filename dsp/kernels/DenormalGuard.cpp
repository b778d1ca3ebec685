#include "dsp/kernels/DenormalGuard.h"

#include <algorithm>

namespace DSP {
namespace {

constexpr uint32_t kHalfWave = 128;

void addConstant(float *samples, uint32_t count, float value)
{
    for (uint32_t i = 0; i < count; ++i) samples[i] += value;
}

} // namespace

void addDenormalGuard(uint32_t frames, float *left, float *right, uint8_t *counter, bool keep)
{
    uint32_t phase = *counter;
    for (uint32_t done = 0; done < frames;) {
        const uint32_t count = std::min(frames - done, kHalfWave - phase % kHalfWave);
        const bool minus = phase % (2 * kHalfWave) >= kHalfWave;
        addConstant(left + done, count, minus ? -kGuardLeft : kGuardLeft);
        if (right != nullptr) addConstant(right + done, count, minus ? -kGuardRight : kGuardRight);
        done += count;
        phase += count;
    }
    if (keep) *counter = static_cast<uint8_t>(phase);
}

} // namespace DSP
