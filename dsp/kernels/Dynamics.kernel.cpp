#include "dsp/kernels/DynamicsKernels.h"
#include "dsp/kernels/Lanes.h"
#include "dsp/kernels/Power.h"

namespace DSP::Kernels::SET {

namespace {

constexpr uint32_t kMost = DynamicsKernels::kMostFrames;
constexpr float kQuietest = 1e-5f; // lower limit of the gain curve's input

/// Frames of four bands, one band per lane.
struct Chunk {
    alignas(32) float lanes[kMost][4];
};

LANES_OP float magnitude(float x) { return x < 0.0f ? -x : x; }
LANES_OP float larger(float a, float b) { return a > b ? a : b; }

/// Computes the detector input, which is the larger channel of each band and frame, and the peaks of both channels.
LANES_OP void measure(const float *const left[4], const float *const right[4], Chunk &levels,
                      DynamicsPeaks &peaks, uint32_t frames)
{
    const F8 silence = F8::splat(0.0f);
    F8 mostLeft[4] = {silence, silence, silence, silence},
       mostRight[4] = {silence, silence, silence, silence};
    size_t i = 0;
    for (; i + 8 <= frames; i += 8) {
        F8 level[4];
        for (int b = 0; b < 4; ++b) {
            const F8 l = left[b] ? abs(F8::load(left[b] + i)) : silence;
            const F8 r = right[b] ? abs(F8::load(right[b] + i)) : l;
            mostLeft[b] = max(l, mostLeft[b]);
            mostRight[b] = max(r, mostRight[b]);
            level[b] = max(l, r);
        }
        transposeHalves(level[0], level[1], level[2], level[3]);
        for (int k = 0; k < 4; ++k) {
            store(levels.lanes[i + k], low(level[k]));
            store(levels.lanes[i + 4 + k], high(level[k]));
        }
    }
    for (int b = 0; b < 4; ++b) {
        float l = horizontalMax(mostLeft[b]), r = horizontalMax(mostRight[b]);
        for (size_t k = i; k < frames; ++k) {
            const float newLeft = left[b] ? magnitude(left[b][k]) : 0.0f;
            const float newRight = right[b] ? magnitude(right[b][k]) : newLeft;
            l = larger(newLeft, l);
            r = larger(newRight, r);
            levels.lanes[k][b] = larger(newLeft, newRight);
        }
        peaks.left[b] = l;
        peaks.right[b] = r;
    }
}

using Rows = float (*)[4]; // part of a chunk, one frame per row

/// Peak detector, in place: instant attack, exponential decay. Returns true if any band reaches its threshold.
LANES_OP bool detect(const DynamicsCoeffs &coeffs, DynamicsState &state, Rows levels, uint32_t frames)
{
    const F4 decay = F4::splat(coeffs.envelopeDecay), floor = F4::splat(kQuietest);
    const F4 threshold = F4::loadAligned(coeffs.threshold);
    F4 envelope = F4::loadAligned(state.envelope), loudest = floor;
#pragma GCC unroll 4
    for (size_t i = 0; i < frames; ++i) {
        const F4 level = F4::loadAligned(levels[i]);
        envelope = select(level > envelope, level, decay * envelope);
        const F4 heard = max(envelope, floor);
        loudest = max(heard, loudest);
        storeAligned(levels[i], heard);
    }
    storeAligned(state.envelope, envelope);
    return any(loudest >= threshold);
}

/// Hard-knee curve, in place: turns levels into target gains.
LANES_OP void curve(const DynamicsCoeffs &coeffs, Rows levels, uint32_t frames)
{
    const F4 t = F4::loadAligned(coeffs.threshold), e = F4::loadAligned(coeffs.exponent);
    const F8 threshold = combine(t, t), one = F8::splat(1.0f);
    const auto exponent = powerExponent(combine(e, e));
    if (frames & 1) store(levels[frames], low(one));
    for (size_t i = 0; i < frames; i += 2) {
        const F8 level = F8::loadAligned(levels[i]);
        storeAligned(levels[i], select(level >= threshold, power(level / threshold, exponent), one));
    }
}

/// Attack towards the target, release towards 1, then a one-pole smoother. Turns `targets` into gains, in place.
template <bool anyTarget>
LANES_OP void follow(const DynamicsCoeffs &coeffs, DynamicsState &state, Rows targets, F4 &smallest,
                     uint32_t frames)
{
    const F4 attack = F4::loadAligned(coeffs.attackComplement), smooth = F4::loadAligned(coeffs.smoothCoeff);
    const F4 release = F4::loadAligned(coeffs.releaseCoeff), rise = F4::loadAligned(coeffs.releaseComplement);
    F4 followed = F4::loadAligned(state.followed), smoothed = F4::loadAligned(state.smoothed);
#pragma GCC unroll 4
    for (size_t i = 0; i < frames; ++i) {
        const F4 target = anyTarget ? F4::loadAligned(targets[i]) : F4::splat(1.0f);
        followed =
            select(target < followed, (target - followed) * attack + followed, release * followed + rise);
        smoothed = (followed - smoothed) * smooth + smoothed;
        smallest = min(smoothed, smallest);
        storeAligned(targets[i], smoothed);
    }
    storeAligned(state.followed, followed);
    storeAligned(state.smoothed, smoothed);
}

LANES_OP void separate(const Chunk &gains, float *const out[4], uint32_t frames)
{
    size_t i = 0;
    for (; i + 8 <= frames; i += 8) {
        F8 g[4];
        for (int k = 0; k < 4; ++k)
            g[k] = combine(F4::loadAligned(gains.lanes[i + k]), F4::loadAligned(gains.lanes[i + 4 + k]));
        transposeHalves(g[0], g[1], g[2], g[3]);
        for (int b = 0; b < 4; ++b) storeAligned(out[b] + i, g[b]);
    }
    for (; i < frames; ++i)
        for (int b = 0; b < 4; ++b) out[b][i] = gains.lanes[i][b];
}

} // namespace

static void computeGains(const DynamicsCoeffs &coeffs, DynamicsState &state, const float *const left[4],
                         const float *const right[4], float *const gains[4], DynamicsPeaks &peaks,
                         uint32_t frames)
{
    // Short enough that out-of-order execution overlaps the follower, which is a chain of dependent operations, with
    // the detector of the next piece.
    constexpr uint32_t kPiece = 16;
    Chunk chunk;
    measure(left, right, chunk, peaks, frames);
    F4 smallest = F4::splat(1.0f);
    for (uint32_t i = 0; i < frames; i += kPiece) {
        const Rows piece = chunk.lanes + i;
        const uint32_t count = frames - i < kPiece ? frames - i : kPiece;
        if (detect(coeffs, state, piece, count)) {
            curve(coeffs, piece, count);
            follow<true>(coeffs, state, piece, smallest, count);
        } else {
            follow<false>(coeffs, state, piece, smallest, count);
        }
    }
    store(peaks.smallestGain, smallest);
    separate(chunk, gains, frames);
}

template <uint32_t channels, bool unity>
LANES_OP void delayAndScale(float *const samples[2], float *const lines[2], const float *const guards[2],
                            uint32_t delay, const float *gains, float makeUp, uint32_t frames)
{
    float *const s[2] = {samples[0], samples[1]}, *const line[2] = {lines[0], lines[1]};
    const float *const guard[2] = {guards[0], guards[1]};
    size_t i = 0;
    for (; i + 8 <= frames; i += 8) {
        const F8 factor = unity ? F8::splat(1.0f) : F8::load(gains + i) * F8::splat(makeUp);
        for (uint32_t c = 0; c < channels; ++c) {
            store(line[c] + i, F8::load(s[c] + i)); // before the load, which may overlap it at short delays
            const F8 delayed = F8::load(line[c] - delay + i);
            store(s[c] + i, (unity ? delayed : delayed * factor) + F8::load(guard[c] + i));
        }
    }
    for (; i < frames; ++i) {
        const float factor = unity ? 1.0f : gains[i] * makeUp;
        for (uint32_t c = 0; c < channels; ++c) {
            line[c][i] = s[c][i];
            s[c][i] = (line[c] - delay)[i] * factor + guard[c][i];
        }
    }
}

static void applyGains(float *const samples[2], float *const lines[2], const float *const guards[2],
                       uint32_t channels, uint32_t delay, const float *gains, float makeUp, uint32_t frames)
{
    if (channels == 2 && gains)
        delayAndScale<2, false>(samples, lines, guards, delay, gains, makeUp, frames);
    else if (channels == 2)
        delayAndScale<2, true>(samples, lines, guards, delay, gains, makeUp, frames);
    else if (gains)
        delayAndScale<1, false>(samples, lines, guards, delay, gains, makeUp, frames);
    else
        delayAndScale<1, true>(samples, lines, guards, delay, gains, makeUp, frames);
}

extern const DynamicsKernels dynamicsKernels;
const DynamicsKernels dynamicsKernels = {.computeGains = computeGains, .applyGains = applyGains};

} // namespace DSP::Kernels::SET
