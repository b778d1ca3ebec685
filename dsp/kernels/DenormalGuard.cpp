#include "dsp/kernels/DenormalGuard.h"

#include <algorithm>
#include <array>

#include "dsp/kernels/Kernels.h"

namespace DSP {
namespace {

constexpr uint32_t kPeriod = GuardWave::kLength;
static_assert(kPeriod == 1u << 8); // phases wrap at 8 bits

using Wave = std::array<float, 2 * kPeriod>; // two, so that a full period can be read from any phase
constexpr Wave makeWave(float amplitude)
{
    Wave wave = {};
    for (uint32_t i = 0; i < wave.size(); ++i) wave[i] = i % kPeriod < kPeriod / 2 ? amplitude : -amplitude;
    return wave;
}
alignas(32) constexpr Wave kLeft = makeWave(kGuardLeft);
alignas(32) constexpr Wave kRight = makeWave(kGuardRight);

} // namespace

GuardWave guardWave(uint8_t phase) { return {kLeft.data() + phase, kRight.data() + phase}; }

GuardWave GuardWave::none()
{
    alignas(32) static constexpr float kZeros[kLength] = {};
    return {kZeros, kZeros};
}

void addGuard(const GuardWave &wave, uint32_t frames, float *left, float *right)
{
    const auto add = Kernels::active().block.add;
    for (uint32_t done = 0; done < frames; done += kPeriod) {
        const uint32_t count = std::min(frames - done, kPeriod);
        add(wave.left, left + done, count);
        if (right) add(wave.right, right + done, count);
    }
}

void addDenormalGuard(uint32_t frames, float *left, float *right, uint8_t *phase, bool keep)
{
    addGuard(guardWave(*phase), frames, left, right);
    if (keep) *phase = static_cast<uint8_t>(*phase + frames);
}

} // namespace DSP
