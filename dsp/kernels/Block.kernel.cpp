#include "dsp/kernels/BlockKernels.h"
#include "dsp/kernels/Lanes.h"

namespace DSP::Kernels::SET {

static int silenceGarbage(float *samples, float loudest, int count)
{
    const F8 most = F8::splat(loudest);
    int refused = 0, i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) {
        const F8 x = F8::load(samples + i);
        const M8 sound = abs(x) <= most; // false for NaN
        if (all(sound)) continue;
        refused += F8::kLanes - __builtin_popcount(static_cast<unsigned>(bits(sound)));
        store(samples + i, keep(sound, x));
    }
    for (; i < count; ++i) {
        if (samples[i] >= -loudest && samples[i] <= loudest) continue;
        samples[i] = 0.0f;
        ++refused;
    }
    return refused;
}

static void offset(float *samples, float value, int count)
{
    int i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) store(samples + i, F8::load(samples + i) + F8::splat(value));
    for (; i < count; ++i) samples[i] += value;
}

static float peak(const float *samples, int count)
{
    F8 most = F8::splat(0.0f);
    int i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) most = max(abs(F8::load(samples + i)), most);
    float result = horizontalMax(most);
    for (; i < count; ++i) {
        const float magnitude = samples[i] < 0.0f ? -samples[i] : samples[i];
        if (magnitude > result) result = magnitude;
    }
    return result;
}

static void monoMix(const float *left, const float *right, float value, float *out, int count)
{
    const F8 guard = F8::splat(value), half = F8::splat(0.5f);
    int i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) {
        const F8 l = F8::load(left + i);
        const F8 mixed = right ? (l + F8::load(right + i)) * half : l;
        store(out + i, mixed + guard);
    }
    for (; i < count; ++i) out[i] = (right ? (left[i] + right[i]) * 0.5f : left[i]) + value;
}

static void add(const float *source, float *target, int count)
{
    int i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) store(target + i, F8::load(target + i) + F8::load(source + i));
    for (; i < count; ++i) target[i] += source[i];
}

static void multiply(const float *source, float *target, int count)
{
    int i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) store(target + i, F8::load(target + i) * F8::load(source + i));
    for (; i < count; ++i) target[i] *= source[i];
}

static void scale(float factor, float *samples, int count)
{
    int i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) store(samples + i, F8::load(samples + i) * F8::splat(factor));
    for (; i < count; ++i) samples[i] *= factor;
}

const BlockKernels blockKernels = {.silenceGarbage = silenceGarbage,
                                   .offset = offset,
                                   .peak = peak,
                                   .monoMix = monoMix,
                                   .add = add,
                                   .multiply = multiply,
                                   .scale = scale};

} // namespace DSP::Kernels::SET
