#include "ui/controls/SpectrumCurve.h"

#include <algorithm>
#include <cmath>

#include "ui/draw/Line.h"

namespace UI::Native {

SpectrumCurve::SpectrumCurve(const SpectrumAxis &pictureAxis) : axis(pictureAxis)
{
    rowOfColumn.reserve(static_cast<size_t>(axis.columns()));
    points.reserve(static_cast<size_t>(axis.columns()) + 1);
}

void SpectrumCurve::addPoint(Point point)
{
    const Point from = points.empty() ? point : points.back();
    const int32_t span = point.x - from.x;
    for (int32_t x = from.x; x <= point.x; ++x) {
        const float share = span > 0 ? static_cast<float>(x - from.x) / static_cast<float>(span) : 1.0f;
        const float row = static_cast<float>(from.y) + share * static_cast<float>(point.y - from.y);
        rowOfColumn[static_cast<size_t>(x)] = static_cast<int32_t>(std::lround(row));
    }
    points.push_back(point);
}

void SpectrumCurve::trace(const std::vector<float> &magnitudes, const SpectrumAxis::Bins &bins)
{
    const int32_t width = axis.columns();
    rowOfColumn.assign(static_cast<size_t>(width), -1);
    points.clear();
    const size_t count = std::min(bins.toColumn.size(), magnitudes.size());
    const auto share = [&](int32_t x) { return bins.perColumn[static_cast<size_t>(x)]; };

    size_t bin = 0;
    int32_t x = 0; // after the first loop: the first column with several bins
    for (; bin < count; ++bin) {
        x = bins.toColumn[bin];
        if (x < 0) continue;
        if (x >= width || share(x) >= 2) break;
        addPoint({x, axis.row(magnitudes[bin])});
    }
    for (; bin < count && x < width && share(x) > 0; ++x) {
        float greatest = 0.0f;
        for (; bin < count && bins.toColumn[bin] == x; ++bin) greatest = std::max(greatest, magnitudes[bin]);
        if (x == 0) continue;
        const Point point{x - 1, axis.row(greatest)}; // draw the peak at the column's left edge
        rowOfColumn[static_cast<size_t>(point.x)] = point.y;
        points.push_back(point);
    }
    if (width < 2) return;
    rowOfColumn.back() = rowOfColumn[static_cast<size_t>(width) - 2];
    if (rowOfColumn.back() >= 0) points.push_back({width - 1, rowOfColumn.back()});
}

void SpectrumCurve::draw(const SurfaceRef &to, uint32_t colour, uint8_t fade) const
{
    const int32_t bottom = axis.bottomRow();
    const auto join = [&](Point from, Point end) {
        drawLine({.x0 = from.x,
                  .y0 = from.y,
                  .x1 = end.x,
                  .y1 = end.y,
                  .style = LineJob::plain,
                  .colour = colour,
                  .fade = fade,
                  .pixels = to->pixels(),
                  .stride = to->stride(),
                  .width = to->width(),
                  .height = to->height()});
    };
    for (int32_t x = 0; x < axis.columns(); ++x) {
        const int32_t row = rowOfColumn[static_cast<size_t>(x)];
        if (row >= 0 && row != bottom) join({x, row}, {x, bottom});
    }
    for (size_t i = 1; i < points.size(); ++i)
        if (points[i - 1].y < bottom || points[i].y < bottom) join(points[i - 1], points[i]);
}

} // namespace UI::Native
