#pragma once
#include <string>
#include <vector>

#include "apps/tessarine/pictures/Drawing.h"

namespace App {

struct Tick {
    double value;
    std::string label; // empty for a grid line without a label
};

struct Axis {
    double low, high;
    std::vector<Tick> ticks;
    std::string title = {};
    bool logarithmic = false;
    bool labelled = true;

    /// Relative position of the value: 0 at `low`, 1 at `high`.
    double place(double value) const;
};

/// Plot area with a grid and labelled axes. Curves are in the units of the axes and are clipped to the area.
class Chart {
public:
    /// Draws the grid, the labels and the titles. Labels and titles lie outside the area.
    Chart(Drawing &drawing, const Box &area, Axis x, Axis y);

    void curve(const std::vector<Position> &values, Colour colour, double width);
    /// Fills the area between the curve and the horizontal line at `base`.
    void area(const std::vector<Position> &values, double base, Colour colour, double opacity);
    /// Draws the frame over the curves.
    void finish();

    struct LegendEntry {
        std::string text;
        Colour colour;
    };
    /// Draws the entries in one row above the area, aligned to the right.
    void legend(const std::vector<LegendEntry> &entries);

private:
    Position place(const Position &value) const;
    std::vector<Position> place(const std::vector<Position> &values) const;

    Drawing &drawing;
    const Box frame;
    const Axis x, y;
};

} // namespace App
