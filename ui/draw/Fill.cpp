#include "ui/draw/Fill.h"

#include "ui/draw/Blend.h"
#include "ui/draw/PixelOperations.h"

namespace UI::Native {

void fillRect(uint32_t *pixels, uint32_t stride, const Rect &area, const Rect &clip, uint32_t colour,
              uint8_t fade)
{
    const Rect part = area.intersected(clip);
    if (part.isEmpty() || !pixels) return;
    const uint32_t inverse = inverseAlpha(fade);
    // Memory order of a pixel's bytes: blue, green, red.
    uint8_t scaled[3];
    for (uint32_t i = 0; i < 3; ++i)
        scaled[i] = static_cast<uint8_t>((colour >> 8 * i & 0xFF) * inverse / 255);
    auto *first = reinterpret_cast<uint8_t *>(pixels + static_cast<size_t>(part.top) * stride + part.left);
    const int step = static_cast<int>(stride * sizeof *pixels);
    DSP::ippiAlphaPremulC_8u_AC4IR(fade, first, step, part.width(), part.height());
    DSP::ippiAddC_8u_AC4IRSfs(scaled, first, step, part.width(), part.height(), 0);
}

void drawRect(uint32_t *pixels, uint32_t stride, const Rect &area, const Rect &clip, uint32_t colour,
              uint8_t fade)
{
    const Rect part = area.intersected(clip);
    if (part.isEmpty() || !pixels) return;
    const uint32_t inverse = inverseAlpha(fade);
    const auto lay = [&](int32_t x, int32_t y) {
        uint32_t &pixel = pixels[static_cast<size_t>(y) * stride + static_cast<size_t>(x)];
        pixel = blend(pixel, colour, fade, inverse);
    };
    for (int32_t x = part.left; x <= part.right; ++x) lay(x, part.top);
    for (int32_t x = part.left; x <= part.right; ++x) lay(x, part.bottom);
    for (int32_t y = part.top; y <= part.bottom; ++y) lay(part.left, y);
    for (int32_t y = part.top; y <= part.bottom; ++y) lay(part.right, y);
}

} // namespace UI::Native
