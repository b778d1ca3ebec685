#pragma once
namespace DSP {

/// Bands that the effect splits the sound into.
constexpr int kBands = 4;

/// The samples of each band; null for a band that is left out and, on the right, for mono.
struct Bands {
    float *left[kBands], *right[kBands];
};

} // namespace DSP
