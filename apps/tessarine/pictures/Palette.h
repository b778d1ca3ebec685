#pragma once
#include <array>

#include "apps/tessarine/pictures/Drawing.h"

namespace App::Palette {

// Distinct in hue and lightness, for greyscale prints and colour-blind users.
constexpr std::array<Colour, 4> kBands = {
    {{0.13, 0.40, 0.67}, {0.10, 0.60, 0.45}, {0.87, 0.56, 0.02}, {0.75, 0.20, 0.36}}};
constexpr Colour kLimiter = {0.38, 0.28, 0.62};
constexpr Colour kPaper = {1.0, 1.0, 1.0};
constexpr Colour kInk = {0.13, 0.15, 0.18};
constexpr Colour kFaintInk = {0.42, 0.45, 0.50};
constexpr Colour kGrid = {0.89, 0.90, 0.92};
constexpr Colour kFrame = {0.70, 0.72, 0.76};
constexpr Colour kInput = {0.55, 0.58, 0.63};
constexpr Colour kOutput = {0.13, 0.40, 0.67};

} // namespace App::Palette
