#include "apps/tessarine/pictures/Chart.h"

#include <algorithm>
#include <cmath>

#include "apps/tessarine/pictures/Palette.h"

namespace App {

namespace {

constexpr double kLabelSize = 11.0, kTitleSize = 12.0; // points

} // namespace

double Axis::place(double value) const
{
    if (logarithmic) return std::log(value / low) / std::log(high / low);
    return (value - low) / (high - low);
}

Chart::Chart(Drawing &target, const Box &area, Axis horizontal, Axis vertical)
    : drawing(target), frame(area), x(std::move(horizontal)), y(std::move(vertical))
{
    for (const Tick &tick : x.ticks) {
        const double at = place({tick.value, y.low}).x;
        drawing.line({at, frame.top}, {at, frame.bottom}, Palette::kGrid, tick.label.empty() ? 0.5 : 1.0);
        if (x.labelled)
            drawing.text({at, frame.bottom + 16.0}, tick.label, kLabelSize, Palette::kFaintInk,
                         Align::centre);
    }
    for (const Tick &tick : y.ticks) {
        const double at = place({x.low, tick.value}).y;
        drawing.line({frame.left, at}, {frame.right, at}, Palette::kGrid, tick.label.empty() ? 0.5 : 1.0);
        if (y.labelled)
            drawing.text({frame.left - 7.0, at + 4.0}, tick.label, kLabelSize, Palette::kFaintInk,
                         Align::right);
    }
    const double middle = (frame.left + frame.right) / 2.0;
    drawing.text({middle, frame.bottom + 34.0}, x.title, kTitleSize, Palette::kInk, Align::centre);
    drawing.verticalText({frame.left - 50.0, (frame.top + frame.bottom) / 2.0}, y.title, kTitleSize,
                         Palette::kInk);
}

Position Chart::place(const Position &value) const
{
    // Cairo cannot draw infinite coordinates, and positions this far outside are clipped anyway
    const double up = std::clamp(y.place(value.y), -1.0, 2.0);
    return {frame.left + x.place(value.x) * frame.width(), frame.bottom - up * frame.height()};
}

std::vector<Position> Chart::place(const std::vector<Position> &values) const
{
    std::vector<Position> points;
    points.reserve(values.size() + 2);
    for (const Position &value : values) points.push_back(place(value));
    return points;
}

void Chart::curve(const std::vector<Position> &values, Colour colour, double width)
{
    drawing.clip(frame);
    drawing.path(place(values), colour, width);
    drawing.unclip();
}

void Chart::area(const std::vector<Position> &values, double base, Colour colour, double opacity)
{
    if (values.empty()) return;
    std::vector<Position> outline = place(values);
    outline.push_back(place({values.back().x, base}));
    outline.push_back(place({values.front().x, base}));
    drawing.clip(frame);
    drawing.fill(outline, colour, opacity);
    drawing.unclip();
}

void Chart::finish() { drawing.rectangle(frame, Palette::kFrame, 1.0); }

void Chart::legend(const std::vector<LegendEntry> &entries)
{
    double right = frame.right;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        right -= drawing.text({right, frame.top - 8.0}, entry->text, kTitleSize, Palette::kInk, Align::right);
        drawing.line({right - 24.0, frame.top - 12.0}, {right - 6.0, frame.top - 12.0}, entry->colour, 3.0);
        right -= 42.0;
    }
}

} // namespace App
