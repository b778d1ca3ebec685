#include "dsp/kernels/CrossOverKernels.h"
#include "dsp/kernels/Lanes.h"

namespace DSP::Kernels::SET {

namespace {

enum class Numerators { highAndLow, low, high };

/// Coefficients and state of a filter pair, held in registers during a block.
template <Numerators numerators>
struct Cascade {
    D4 a1, a2, twice, z1[2], z2[2];

    LANES_OP Cascade load(const FilterPair &pair, const FilterPairState &state)
    {
        Cascade c;
        c.a1 = D4::loadAligned(pair.a1);
        c.a2 = D4::loadAligned(pair.a2);
        c.twice = D4::of(-2, -2, 2, 2);
        for (int s = 0; s < 2; ++s) {
            c.z1[s] = D4::loadAligned(state.z1[s]);
            c.z2[s] = D4::loadAligned(state.z2[s]);
        }
        return c;
    }
    [[gnu::always_inline]] inline void save(FilterPairState &state) const
    {
        for (int s = 0; s < 2; ++s) {
            storeAligned(state.z1[s], z1[s]);
            storeAligned(state.z2[s], z2[s]);
        }
    }
    /// Two sections of (1 +- z^-1)^2 / (1 + a1 z^-1 + a2 z^-2); Smith, "Introduction to Digital Filters", ch. 9.
    [[gnu::always_inline]] inline D4 tick(D4 x)
    {
        for (int s = 0; s < 2; ++s) {
            const D4 y = x + z1[s];
            if constexpr (numerators == Numerators::low)
                z1[s] = (z2[s] + (x + x)) - a1 * y;
            else if constexpr (numerators == Numerators::high)
                z1[s] = (z2[s] - (x + x)) - a1 * y;
            else
                z1[s] = (z2[s] + twice * x) - a1 * y;
            z2[s] = x - a2 * y;
            x = y;
        }
        return x;
    }
};

struct Bank {
    Cascade<Numerators::highAndLow> outer;
    Cascade<Numerators::low> inner;
    Cascade<Numerators::high> second;
    F4 outerGain, innerGain;

    LANES_OP Bank load(const FilterBankCoeffs &coeffs, const FilterBankState &state)
    {
        return {decltype(outer)::load(coeffs.outer, state.outer),
                decltype(inner)::load(coeffs.inner, state.inner),
                decltype(second)::load(coeffs.second, state.second), F4::loadAligned(coeffs.outer.gain),
                F4::loadAligned(coeffs.inner.gain)};
    }
    [[gnu::always_inline]] inline void save(FilterBankState &state) const
    {
        outer.save(state.outer);
        inner.save(state.inner);
        second.save(state.second);
    }
    /// Filters one frame; the lanes of `x` are left, right, left, right.
    [[gnu::always_inline]] inline void tick(D4 x, F4 &outerBands, F4 &innerBands)
    {
        outerBands = toFloat(outer.tick(x)) * outerGain;
        innerBands = toFloat(second.tick(toDouble(toFloat(inner.tick(x)) * innerGain)));
    }
};

} // namespace

static void split(const FilterBankCoeffs &coeffs, FilterBankState &state, const float *left,
                  const float *right, const FilterBankOutput &out, uint32_t frames)
{
    Bank bank = Bank::load(coeffs, state);
    // A local copy, so that the compiler need not reload the pointers after each store.
    const FilterBankOutput bands = out;
    size_t i = 0;
    for (; i + 4 <= frames; i += 4) {
        const F4 l = F4::load(left + i), r = F4::load(right + i);
        const D4 early = toDouble(unpackLow(l, r)), late = toDouble(unpackHigh(l, r));
        F4 o[4], n[4];
        bank.tick(lowHalves(early, early), o[0], n[0]);
        bank.tick(highHalves(early, early), o[1], n[1]);
        bank.tick(lowHalves(late, late), o[2], n[2]);
        bank.tick(highHalves(late, late), o[3], n[3]);
        transpose(o[0], o[1], o[2], o[3]);
        transpose(n[0], n[1], n[2], n[3]);
        const F4 guardLeft = F4::load(bands.guardLeft + i), guardRight = F4::load(bands.guardRight + i);
        store(bands.left[0] + i, o[0] + guardLeft);
        store(bands.right[0] + i, o[1] + guardRight);
        store(bands.left[3] + i, o[2] + guardLeft);
        store(bands.right[3] + i, o[3] + guardRight);
        store(bands.left[1] + i, n[0] + guardLeft);
        store(bands.right[1] + i, n[1] + guardRight);
        store(bands.left[2] + i, n[2] + guardLeft);
        store(bands.right[2] + i, n[3] + guardRight);
    }
    for (; i < frames; ++i) {
        F4 o, n;
        bank.tick(D4::of(left[i], right[i], left[i], right[i]), o, n);
        alignas(16) float outer[4], inner[4];
        store(outer, o);
        store(inner, n);
        const float guardLeft = bands.guardLeft[i], guardRight = bands.guardRight[i];
        bands.left[0][i] = outer[0] + guardLeft;
        bands.right[0][i] = outer[1] + guardRight;
        bands.left[3][i] = outer[2] + guardLeft;
        bands.right[3][i] = outer[3] + guardRight;
        bands.left[1][i] = inner[0] + guardLeft;
        bands.right[1][i] = inner[1] + guardRight;
        bands.left[2][i] = inner[2] + guardLeft;
        bands.right[2][i] = inner[3] + guardRight;
    }
    bank.save(state);
}

static bool isWithin(const FilterBankState &state, double largest)
{
    const D4 most = D4::splat(largest);
    MD4 within = most <= most;
    const FilterPairState *const pairs[] = {&state.outer, &state.inner, &state.second};
    for (const FilterPairState *pair : pairs)
        for (int s = 0; s < 2; ++s)
            within = within & (abs(D4::loadAligned(pair->z1[s])) <= most) &
                     (abs(D4::loadAligned(pair->z2[s])) <= most);
    return all(within); // false for NaN
}

extern const CrossOverKernels crossOverKernels;
const CrossOverKernels crossOverKernels = {.split = split, .isWithin = isWithin};

} // namespace DSP::Kernels::SET
