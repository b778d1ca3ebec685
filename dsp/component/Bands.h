#pragma once

namespace DSP {

/// Bands that the effect splits the sound into.
constexpr int kBands = 4;

} // namespace DSP
