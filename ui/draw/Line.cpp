#include "ui/draw/Line.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "ui/draw/Blend.h"

namespace UI::Native {
namespace {

int32_t sign(int32_t value) { return (value > 0) - (value < 0); }

void lay(const LineJob &job, int32_t x, int32_t y, uint32_t colour, uint32_t a)
{
    uint32_t &pixel = job.pixels[static_cast<int64_t>(y) * job.stride + x];
    pixel = blend(pixel, colour, a, inverseAlpha(a));
}

void drawPlainLine(const LineJob &job)
{
    const int32_t dx = job.x1 - job.x0, dy = job.y1 - job.y0;
    const int32_t spanX = std::abs(dx), spanY = std::abs(dy), major = std::max(spanX, spanY);
    int32_t x = job.x0, y = job.y0, restX = 0, restY = 0;
    for (int32_t t = 0; t <= major; ++t) {
        if (x >= 0 && x < job.width && y >= 0 && y < job.height) {
            if (job.style == LineJob::plain)
                lay(job, x, y, job.colour, job.fade);
            else if (job.colours)
                lay(job, x, y, job.colours[t], 0);
        }
        restX += spanX;
        restY += spanY;
        if (restX >= major) {
            restX -= major;
            x += sign(dx);
        }
        if (restY >= major) {
            restY -= major;
            y += sign(dy);
        }
    }
}

void drawSmoothLine(const LineJob &job)
{
    const int32_t spanX = std::abs(job.x1 - job.x0), spanY = std::abs(job.y1 - job.y0);
    const bool steep = spanY > spanX;
    const int32_t dx = steep ? spanY : spanX, dy = steep ? spanX : spanY; // along and across the longer axis
    const int32_t stepX = sign(job.x1 - job.x0), stepY = sign(job.y1 - job.y0);
    const float length = std::max(std::sqrt(static_cast<float>(dx) * static_cast<float>(dx) +
                                            static_cast<float>(dy) * static_cast<float>(dy)),
                                  0.001f);
    const float inverse = 1.0f / (2.0f * length), side = 2.0f * static_cast<float>(dx) * inverse;
    constexpr float kWidth = 2.0f / 3.0f; // reciprocal of the filter's radius in pixels

    const auto put = [&](int32_t x, int32_t y, float distance) {
        const auto a = static_cast<uint32_t>(distance * distance * static_cast<float>(255 - job.fade));
        lay(job, x, y, job.colour, std::min(a + job.fade, 255u));
    };
    const int32_t acrossX = steep ? (stepX < 0 ? -1 : 1) : 0, acrossY = steep ? 0 : (stepY < 0 ? -1 : 1);
    const int32_t stay = 2 * dy, move = 2 * (dy - dx);
    int32_t error = 2 * dy - dx, x = job.x0, y = job.y0;
    float distance = 0.0f; // from the pixel's centre to the line, times 2 x length
    for (int32_t t = 0; t <= dx; ++t) {
        const float d = distance * inverse;
        put(x, y, d * kWidth);
        put(x + acrossX, y + acrossY, (side - d) * kWidth);
        put(x - acrossX, y - acrossY, (side + d) * kWidth);
        if (error >= 0) {
            distance = static_cast<float>(move);
            error += move;
            x += stepX;
            y += stepY;
        } else {
            distance = static_cast<float>(error + dx);
            error += stay;
            (steep ? y : x) += steep ? stepY : stepX;
        }
    }
}

} // namespace

void drawLine(const LineJob &job)
{
    if (!job.pixels) return;
    if (job.style == LineJob::smooth)
        drawSmoothLine(job);
    else
        drawPlainLine(job);
}

} // namespace UI::Native
