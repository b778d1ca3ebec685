#include "dsp/kernels/BlockKernels.h"
#include "dsp/kernels/Lanes.h"

namespace DSP::Kernels::SET {

static uint32_t silenceGarbage(float *samples, float loudest, uint32_t count)
{
    const F8 most = F8::splat(loudest);
    uint32_t refused = 0;
    size_t i = 0;
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

static float peak(const float *samples, uint32_t count)
{
    F8 most = F8::splat(0.0f);
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) most = max(abs(F8::load(samples + i)), most);
    float result = horizontalMax(most);
    for (; i < count; ++i) {
        const float magnitude = samples[i] < 0.0f ? -samples[i] : samples[i];
        if (magnitude > result) result = magnitude;
    }
    return result;
}

static void monoMix(const float *left, const float *right, const float *wave, float *out, uint32_t count)
{
    const F8 half = F8::splat(0.5f);
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) {
        const F8 l = F8::load(left + i);
        const F8 mixed = right ? (l + F8::load(right + i)) * half : l;
        store(out + i, mixed - F8::load(wave + i));
    }
    for (; i < count; ++i) out[i] = (right ? (left[i] + right[i]) * 0.5f : left[i]) - wave[i];
}

static float least(const float *values, float most, uint32_t count)
{
    F8 lowest = F8::splat(most);
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) lowest = min(F8::load(values + i), lowest);
    float result = horizontalMin(lowest);
    for (; i < count; ++i)
        if (values[i] < result) result = values[i];
    return result;
}

// Not memcpy: its dispatch is slow for short copies, and its `rep movsb` inflates the instruction counts of the
// benchmarks.
static void copy(const float *source, float *target, uint32_t count)
{
    size_t i = 0;
    for (; i + 4 * F8::kLanes <= count; i += 4 * F8::kLanes) {
        const F8 a = F8::load(source + i), b = F8::load(source + i + 8);
        const F8 c = F8::load(source + i + 16), d = F8::load(source + i + 24);
        store(target + i, a);
        store(target + i + 8, b);
        store(target + i + 16, c);
        store(target + i + 24, d);
    }
    for (; i + F8::kLanes <= count; i += F8::kLanes) store(target + i, F8::load(source + i));
    for (; i < count; ++i) target[i] = source[i];
}

static void add(const float *source, float *target, uint32_t count)
{
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes)
        store(target + i, F8::load(target + i) + F8::load(source + i));
    for (; i < count; ++i) target[i] += source[i];
}

template <uint32_t sourceCount>
LANES_OP void sumOf(const float *const sources[4], float *out, uint32_t count)
{
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) {
        F8 total = F8::load(sources[0] + i);
        for (uint32_t k = 1; k < sourceCount; ++k) total = total + F8::load(sources[k] + i);
        store(out + i, total);
    }
    for (; i < count; ++i) {
        float total = sources[0][i];
        for (uint32_t k = 1; k < sourceCount; ++k) total += sources[k][i];
        out[i] = total;
    }
}

static void sum(const float *const sources[4], uint32_t sourceCount, float *out, uint32_t count)
{
    const float *const s[4] = {sources[0], sources[1], sources[2], sources[3]};
    switch (sourceCount) {
    case 1: return sumOf<1>(s, out, count);
    case 2: return sumOf<2>(s, out, count);
    case 3: return sumOf<3>(s, out, count);
    default: return sumOf<4>(s, out, count);
    }
}

static void multiply(const float *source, float *target, uint32_t count)
{
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes)
        store(target + i, F8::load(target + i) * F8::load(source + i));
    for (; i < count; ++i) target[i] *= source[i];
}

static void scale(float factor, float *samples, uint32_t count)
{
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes)
        store(samples + i, F8::load(samples + i) * F8::splat(factor));
    for (; i < count; ++i) samples[i] *= factor;
}

extern const BlockKernels blockKernels;
const BlockKernels blockKernels = {.silenceGarbage = silenceGarbage,
                                   .peak = peak,
                                   .least = least,
                                   .monoMix = monoMix,
                                   .copy = copy,
                                   .add = add,
                                   .sum = sum,
                                   .multiply = multiply,
                                   .scale = scale};

} // namespace DSP::Kernels::SET
