#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// Two Linkwitz-Riley filters, each a cascade of two identical sections, for both channels.
/// Lanes: first filter left, first filter right, second filter left, second filter right.
/// The numerator is (1 + z^-1)^2 for low-pass and (1 - z^-1)^2 for high-pass filters; see FilterBankCoeffs.
struct FilterPair {
    alignas(32) double a1[4] = {}, a2[4] = {};
    alignas(16) float gain[4] = {}; // linear, applied after the filters
};
struct FilterPairState {
    alignas(32) double z1[2][4] = {}, z2[2][4] = {}; // per section, transposed direct form II
};

/// Four-band filter bank of three filter pairs. The top and bottom bands have one filter each; the inner bands have
/// a low pass followed by a high pass.
struct FilterBankCoeffs {
    FilterPair outer;  // top band: high pass; bottom band: low pass
    FilterPair inner;  // upper and lower inner band: low passes
    FilterPair second; // upper and lower inner band: high passes after `inner`; gain unused
};
struct FilterBankState {
    FilterPairState outer, inner, second;
};

/// Output buffers in the order top, upper inner, lower inner, bottom band, and the denormal guard to add to each.
struct FilterBankOutput {
    float *left[4], *right[4];
    const float *guardLeft, *guardRight;
};

struct CrossOverKernels {
    /// Splits a block into four bands. `left` and `right` may be the same buffer, but not an output buffer.
    /// Filters run in double precision and output single precision. An unstable filter eventually outputs infinity
    /// or NaN: check isWithin afterwards.
    void (*split)(const FilterBankCoeffs &coeffs, FilterBankState &state, const float *left,
                  const float *right, const FilterBankOutput &out, uint32_t frames);
    /// True if no state value is NaN or above `largest` in magnitude.
    bool (*isWithin)(const FilterBankState &state, double largest);
};

} // namespace DSP::Kernels
