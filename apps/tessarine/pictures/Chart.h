#pragma once
#include <string>
#include <vector>

#include "apps/tessarine/pictures/Drawing.h"

namespace App {

struct Tick {
    double value;
    std::string label; // empty for a grid line alone
};

struct Axis {
    double low, high;
    std::vector<Tick> ticks;
    std::string title = {};
    bool logarithmic = false;
    bool labelled = true;

    /// Place of the value, 0 at low to 1 at high.
    double place(double value) const;
};

/// Plot area with a light grid and labelled axes; curves are given in the axes' own units and cut at the
/// frame.
class Chart {
public:
    /// Draws grid and labels; labels and titles stand outside the area.
    Chart(Drawing &drawing, const Box &area, Axis x, Axis y);

    void curve(const std::vector<Position> &values, Colour colour, double width);
    /// The area between the curve and `base`.
    void area(const std::vector<Position> &values, double base, Colour colour, double opacity);
    void finish();

    struct LegendEntry {
        std::string text;
        Colour colour;
    };
    /// In one row that ends at the right edge, above the area.
    void legend(const std::vector<LegendEntry> &entries);

private:
    Position place(const Position &value) const;
    std::vector<Position> place(const std::vector<Position> &values) const;

    Drawing &drawing;
    const Box frame;
    const Axis x, y;
};

} // namespace App
