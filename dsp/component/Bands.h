#pragma once
namespace DSP {

/// Number of frequency bands.
constexpr int kBands = 4;

/// The samples of each band. Both pointers are null for an omitted band; `right` is null for mono.
struct Bands {
    float *left[kBands], *right[kBands];
};

} // namespace DSP
