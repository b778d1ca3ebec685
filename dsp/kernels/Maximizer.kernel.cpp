#include "dsp/kernels/Lanes.h"
#include "dsp/kernels/MaximizerKernels.h"
#include "dsp/kernels/Power.h"

namespace DSP::Kernels::SET {

namespace {

constexpr uint32_t kMost = MaximizerKernels::kMostFrames;

// Passes over work arrays round the length up to whole vectors; the extra results are never read.
LANES_OP uint32_t wholeVectors(uint32_t frames)
{
    return (frames + F8::kLanes - 1) / F8::kLanes * F8::kLanes;
}

LANES_OP float magnitude(float x) { return x < 0.0f ? -x : x; }

} // namespace

static void detect(const float *left, const float *right, float decay, float &envelope, float *envelopes,
                   uint32_t frames)
{
    alignas(32) float levels[kMost];
    for (size_t i = 0; i < wholeVectors(frames); i += F8::kLanes) {
        const F8 l = abs(F8::load(left + i));
        storeAligned(levels + i, right ? max(l, abs(F8::load(right + i))) : l);
    }
    float now = envelope;
#pragma GCC unroll 4
    for (size_t i = 0; i < frames; ++i) {
        const float fallen = decay * now;
        now = levels[i] > fallen ? levels[i] : fallen;
        envelopes[i] = now;
    }
    envelope = now;
    for (size_t i = frames; i < wholeVectors(frames); ++i) envelopes[i] = 0.0f;
}

static void softGains(float threshold, float exponent, const MaximizerFollower &follower, float smoothCoeff,
                      float &followed, float &smoothed, float *gains, uint32_t frames)
{
    // Short enough that out-of-order execution overlaps the follower with the gain curve of the next piece.
    constexpr uint32_t kPiece = 16;
    const F8 t = F8::splat(threshold), one = F8::splat(1.0f);
    const auto e = powerExponent(F8::splat(exponent));
    constexpr float kStandstill = 1e-9f; // the smoother jumps to its target below this difference
    const MaximizerFollower f = follower;
    float gain = followed, smooth = smoothed;
    for (uint32_t start = 0; start < frames; start += kPiece) {
        const uint32_t end = frames < start + kPiece ? frames : start + kPiece;
        for (size_t i = start; i < end; i += F8::kLanes) {
            const F8 envelope = F8::loadAligned(gains + i);
            const M8 over = envelope >= t;
            storeAligned(gains + i, any(over) ? select(over, power(envelope / t, e), one) : one);
        }
#pragma GCC unroll 4
        for (size_t i = start; i < end; ++i) {
            const float target = gains[i];
            const float down = target * f.attackComplement + f.attackCoeff * gain;
            const float up = f.releaseCoeff * gain + f.releaseComplement;
            gain = target < gain ? down : up;
            const float difference = gain - smooth;
            const float moved = smooth + difference * smoothCoeff;
            smooth = magnitude(difference) > kStandstill ? moved : gain;
            gains[i] = smooth;
        }
    }
    followed = gain;
    smoothed = smooth;
}

static void holdingGains(float threshold, float *gains, uint32_t frames)
{
    const F8 t = F8::splat(threshold), one = F8::splat(1.0f);
    for (size_t i = 0; i < wholeVectors(frames); i += F8::kLanes) {
        const F8 envelope = F8::loadAligned(gains + i);
        storeAligned(gains + i, select(envelope < t, one, t / envelope));
    }
}

namespace {

constexpr uint32_t kReach = MinimumLadder::kLongestTail;
static_assert(kReach % F8::kLanes == 0); // keeps the chunk aligned
struct Span {
    alignas(32) float values[kReach + kMost]; // the chunk starts at values[kReach], directly after the tail
};

template <int step>
LANES_OP void doubleSpan(MinimumLadder &ladder, Span &from, Span &to, uint32_t frames)
{
    constexpr uint32_t tail = MinimumLadder::kTail[step];
    __builtin_memcpy(from.values + kReach - tail, ladder.tails[step], tail * sizeof(float));
    __builtin_memcpy(ladder.tails[step], from.values + kReach + frames - tail, tail * sizeof(float));
    for (size_t i = kReach; i < kReach + wholeVectors(frames); i += F8::kLanes)
        storeAligned(to.values + i, min(F8::loadAligned(from.values + i), F8::load(from.values + i - tail)));
}

} // namespace

// The minimum of 2^(k+1) values is the smaller of two minima of 2^k values. Eight steps give a window of 200 at a
// constant cost: the sparse table of Bender and Farach-Colton, "The LCA problem revisited" (2000), as a sliding
// window.
static void slidingMinimum(MinimumLadder &ladder, float *values, uint32_t frames)
{
    Span a, b;
    for (size_t i = 0; i < wholeVectors(frames); i += F8::kLanes)
        storeAligned(a.values + kReach + i, F8::loadAligned(values + i));
    doubleSpan<0>(ladder, a, b, frames);
    doubleSpan<1>(ladder, b, a, frames);
    doubleSpan<2>(ladder, a, b, frames);
    doubleSpan<3>(ladder, b, a, frames);
    doubleSpan<4>(ladder, a, b, frames);
    doubleSpan<5>(ladder, b, a, frames);
    doubleSpan<6>(ladder, a, b, frames);
    doubleSpan<7>(ladder, b, a, frames);
    for (size_t i = 0; i < wholeVectors(frames); i += F8::kLanes)
        storeAligned(values + i, F8::loadAligned(a.values + kReach + i));
}

static void followMinimum(const MaximizerFollower &follower, float &followed, float *gains, uint32_t frames)
{
    const MaximizerFollower f = follower;
    float gain = followed;
#pragma GCC unroll 4
    for (size_t i = 0; i < frames; ++i) {
        const float least = gains[i];
        const float down = least * f.attackComplement + f.attackCoeff * gain;
        const float up = f.releaseCoeff * gain + f.releaseComplement;
        const float next = least < gain ? down : up;
        gain = least < next ? least : next;
        gains[i] = gain;
    }
    followed = gain;
}

namespace {

/// Computes `groups` vectors of sums together, so that each weight is loaded once for all of them.
template <uint32_t groups>
LANES_OP void weightedSums(const float *weights, const float *gains, float *sums)
{
    F8 sum[groups];
    const F8 newest = F8::splat(weights[0]);
    for (uint32_t g = 0; g < groups; ++g)
        sum[g] = (F8::load(gains + 8 * g) + F8::load(gains + 8 * g - 1)) * newest;
    for (uint32_t j = 1; j < MaximizerKernels::kTaps / 2; ++j) {
        const F8 weight = F8::splat(weights[j]);
        for (uint32_t g = 0; g < groups; ++g) {
            const float *const here = gains + 8 * g;
            sum[g] =
                sum[g] + (F8::load(here - 1 - j) + F8::load(here - MaximizerKernels::kTaps + j)) * weight;
        }
    }
    for (uint32_t g = 0; g < groups; ++g) storeAligned(sums + 8 * g, sum[g]);
}

} // namespace

static void weightedSum(const float weights[MaximizerKernels::kTaps / 2], const float *gains, float *sums,
                        uint32_t frames)
{
    size_t i = 0;
    for (; i + 32 <= frames; i += 32) weightedSums<4>(weights, gains + i, sums + i);
    for (; i < frames; i += 8) weightedSums<1>(weights, gains + i, sums + i);
}

static void apply(const float *samples, const float *gains, float factor, float *out, uint32_t frames)
{
    const F8 f = F8::splat(factor);
    size_t i = 0;
    for (; i + F8::kLanes <= frames; i += F8::kLanes)
        store(out + i, F8::load(samples + i) * (F8::load(gains + i) * f));
    for (; i < frames; ++i) out[i] = samples[i] * (gains[i] * factor);
}

extern const MaximizerKernels maximizerKernels;
const MaximizerKernels maximizerKernels = {.detect = detect,
                                           .softGains = softGains,
                                           .holdingGains = holdingGains,
                                           .slidingMinimum = slidingMinimum,
                                           .followMinimum = followMinimum,
                                           .weightedSum = weightedSum,
                                           .apply = apply};

} // namespace DSP::Kernels::SET
