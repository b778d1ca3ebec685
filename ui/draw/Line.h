#pragma once
#include <cstdint>

namespace UI::Native {

/// A straight line to draw, including both end points.
struct LineJob {
    enum Style : uint32_t { plain = 0, smooth = 1, coloured = 2 };

    int32_t x0, y0, x1, y1;
    Style style;                       // `coloured` and above: pixel t has colours[t]
    uint32_t colour;                   // 0xRRGGBB
    const uint32_t *colours = nullptr; // one per pixel along the longer axis
    uint8_t fade;                      // inverted alpha
    uint32_t *pixels;
    uint32_t stride;       // pixels
    int32_t width, height; // of the target, in pixels
};

/// Clips plain and coloured lines to the target. A smooth line is three pixels wide with soft edges. It is not
/// clipped, so it must stay one pixel inside the target.
/// Origin  digital differential analyser; smooth: Gupta and Sproull, "Filtering edges for gray-scale
///         displays", Computer Graphics 15 (1981)
/// Thread  window thread
void drawLine(const LineJob &job);

} // namespace UI::Native
