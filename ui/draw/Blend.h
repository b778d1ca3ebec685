#pragma once
#include <cstdint>

namespace UI::Native {

/// What stands for 256 - a, so that an opaque pixel's weight fits a byte.
constexpr uint32_t inverseAlpha(uint32_t a) { return a == 0 ? 255 : 256 - a; }

/// Lays `src` over `dst`, both 0xRRGGBB, where `a` is the inverted alpha: 0 gives src, 255 gives dst, each
/// channel else (dst x a + src x inverse) / 256. `inverse` is inverseAlpha(a). The top byte becomes 0.
constexpr uint32_t blend(uint32_t dst, uint32_t src, uint32_t a, uint32_t inverse)
{
    constexpr uint32_t kColour = 0xFFFFFF, kOuter = 0xFF00FF, kInner = 0x00FF00;
    if (a == 0) return src & kColour;
    if (a == 255) return dst & kColour;
    // Red and blue share a word: neither product reaches the other's bits.
    const uint32_t outer = (dst & kOuter) * a + (src & kOuter) * inverse;
    const uint32_t inner = (dst & kInner) * a + (src & kInner) * inverse;
    return (outer >> 8 & kOuter) | (inner >> 8 & kInner);
}

} // namespace UI::Native
