#pragma once
#include <cstdint>

namespace UI::Native {

/// A straight line to draw, both ends included.
struct LineJob {
    enum Style : uint32_t { plain = 0, smooth = 1, coloured = 2 };

    int32_t x0, y0, x1, y1;
    Style style;                       // `coloured` and above: pixel t takes colours[t]
    uint32_t colour;                   // 0xRRGGBB
    const uint32_t *colours = nullptr; // one for each pixel of the longer axis
    uint8_t fade;                      // inverted alpha
    uint32_t *pixels;
    uint32_t stride;       // pixels
    int32_t width, height; // of the target, in pixels
};

/// Plain and coloured lines leave out pixels beyond the target. A smooth line is three pixels wide, fading to
/// its sides, and has to stay one pixel inside the target.
/// Origin  digital differential analyser; smooth: Gupta and Sproull, "Filtering edges for gray-scale
///         displays", Computer Graphics 15 (1981)
/// Thread  the window's
void drawLine(const LineJob &job);

} // namespace UI::Native
