#pragma once
#include <cstdint>

namespace UI::Native {

/// The source pixel's weight: 256 - a, but 255 for a = 0, so that it fits a byte.
constexpr uint32_t inverseAlpha(uint32_t a) { return a == 0 ? 255 : 256 - a; }

/// Blends `src` over `dst`, both 0xRRGGBB. `a` is the inverted alpha: 0 returns src, 255 returns dst, other values
/// return (dst x a + src x inverse) / 256 for each channel. `inverse` is inverseAlpha(a). The top byte becomes 0.
constexpr uint32_t blend(uint32_t dst, uint32_t src, uint32_t a, uint32_t inverse)
{
    constexpr uint32_t kColour = 0xFFFFFF, kOuter = 0xFF00FF, kInner = 0x00FF00;
    if (a == 0) return src & kColour;
    if (a == 255) return dst & kColour;
    // Red and blue share a word; their products do not overlap.
    const uint32_t outer = (dst & kOuter) * a + (src & kOuter) * inverse;
    const uint32_t inner = (dst & kInner) * a + (src & kInner) * inverse;
    return (outer >> 8 & kOuter) | (inner >> 8 & kInner);
}

} // namespace UI::Native
