#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// Two Linkwitz-Riley filters side by side, each a cascade of two like sections, for left and right at once.
/// Lanes: first filter left, first filter right, second filter left, second filter right.
/// Numerators are those of a low pass, (1 + z^-1)^2, or of a high pass, (1 - z^-1)^2; the slot says which.
struct FilterPair {
    alignas(32) double a1[4] = {}, a2[4] = {};
    alignas(16) float gain[4] = {}; // linear, behind the filters
};
struct FilterPairState {
    alignas(32) double z1[2][4] = {}, z2[2][4] = {}; // of both sections, transposed direct form II
};

/// The filter bank of four bands: three slots of two filters: the outer bands have one filter each, the inner bands
/// a low pass followed by a high pass.
struct FilterBankCoeffs {
    FilterPair outer;  // top band: high pass; bottom band: low pass
    FilterPair inner;  // upper and lower inner band: low passes
    FilterPair second; // upper and lower inner band: high passes behind `inner`; gain unused
};
struct FilterBankState {
    FilterPairState outer, inner, second;
};

/// Where the bands go, in the order of the slots: top, upper inner, lower inner, bottom; and what is added to
/// every sample of each.
struct FilterBankOutput {
    float *left[4], *right[4];
    const float *guardLeft, *guardRight;
};

struct CrossOverKernels {
    /// Splits a block into four bands. `left` and `right` may be the same buffer, but may not be an output.
    /// Filters run in 64 bits; what leaves a filter is narrowed to 32. A filter that lost its stability gives
    /// infinities and NaN in the end: ask isWithin afterwards.
    void (*split)(const FilterBankCoeffs &coeffs, FilterBankState &state, const float *left,
                  const float *right, const FilterBankOutput &out, uint32_t frames);
    /// Whether all of the state is finite and at most `largest`.
    bool (*isWithin)(const FilterBankState &state, double largest);
};

} // namespace DSP::Kernels
