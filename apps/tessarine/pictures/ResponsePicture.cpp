#include "apps/tessarine/pictures/ResponsePicture.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/pictures/Chart.h"
#include "apps/tessarine/pictures/Palette.h"

namespace App {

namespace {

constexpr double kWidth = 1000.0, kHeight = 700.0, kLeft = 76.0, kRight = kWidth - 24.0; // points
constexpr Box kMain = {kLeft, 76.0, kRight, 440.0}, kFine = {kLeft, 496.0, kRight, kHeight - 56.0};
constexpr double kFloorDb = -60.0;

Axis frequencyAxis(const Response &response)
{
    Axis axis{.low = response.frequencies.front(),
              .high = response.frequencies.back(),
              .ticks = {},
              .logarithmic = true};
    for (double decade = 10.0; decade <= 10000.0; decade *= 10.0) {
        for (int digit = 1; digit <= 9; ++digit) {
            const double hz = decade * digit;
            if (hz < axis.low || hz > axis.high) continue;
            const bool named = digit == 1 || digit == 2 || digit == 5;
            const std::string label =
                hz >= 1000.0 ? fmt::format("{:g}k", hz / 1000.0) : fmt::format("{:g}", hz);
            axis.ticks.push_back({hz, named ? label : ""});
        }
    }
    return axis;
}

Axis levelAxis(double low, double high, double step, const char *title)
{
    Axis axis{.low = low, .high = high, .ticks = {}, .title = title};
    for (double db = std::ceil(low / step) * step; db <= high + step / 100.0; db += step)
        axis.ticks.push_back({db, fmt::format("{:+g}", std::round(db * 1000.0) / 1000.0)});
    for (Tick &tick : axis.ticks) {
        if (tick.label == "+0" || tick.label == "-0") tick.label = "0";
    }
    return axis;
}

std::vector<Position> points(const Response &response, const std::vector<double> &levels)
{
    std::vector<Position> result;
    for (size_t i = 0; i < levels.size(); ++i) result.push_back({response.frequencies[i], levels[i]});
    return result;
}

void drawBands(Drawing &drawing, const Response &response)
{
    double loudest = response.highest().db;
    for (const auto &band : response.bands)
        loudest = std::max(loudest, *std::max_element(band.begin(), band.end()));
    const double top = std::max(6.0, std::ceil((loudest + 1.0) / 6.0) * 6.0);
    Axis frequency = frequencyAxis(response);
    Chart chart(drawing, kMain, frequency, levelAxis(kFloorDb, top, 6.0, "Level (dB)"));
    std::vector<Chart::LegendEntry> legend;
    for (size_t band = 0; band < response.bands.size(); ++band) {
        const auto curve = points(response, response.bands[band]);
        chart.area(curve, kFloorDb, Palette::kBands[band], 0.06);
        chart.curve(curve, Palette::kBands[band], 2.0);
        legend.push_back({fmt::format("Band {}", band + 1), Palette::kBands[band]});
    }
    chart.curve(points(response, response.sum), Palette::kInk, 2.2);
    legend.push_back({"Sum", Palette::kInk});
    chart.finish();
    chart.legend(legend);
}

/// Rounds `level` in dB up to a round number from 1 to 60.
double cover(double level)
{
    constexpr double kRanges[] = {1.0, 2.0, 5.0, 10.0, 20.0, 30.0, 60.0};
    for (const double range : kRanges) {
        if (level <= range) return range;
    }
    return std::end(kRanges)[-1];
}

double gridStep(double span)
{
    constexpr double kMostSteps = 6.0;
    for (const double step : {0.5, 1.0, 2.0, 5.0, 10.0}) {
        if (span / step <= kMostSteps) return step;
    }
    return 20.0;
}

void drawRipple(Drawing &drawing, const Response &response)
{
    const Response::Extreme low = response.lowest(), high = response.highest();
    const double bottom = -cover(-low.db), top = cover(high.db);
    Axis frequency = frequencyAxis(response);
    frequency.title = "Frequency (Hz)";
    Chart chart(drawing, kFine, frequency, levelAxis(bottom, top, gridStep(top - bottom), "Sum (dB)"));
    chart.curve({{frequency.low, 0.0}, {frequency.high, 0.0}}, Palette::kFrame, 1.0);
    chart.curve(points(response, response.sum), Palette::kInk, 2.0);
    chart.finish();
    drawing.text({kLeft, kFine.top - 8.0},
                 fmt::format("Sum, enlarged: {:+.2f} dB at {:.0f} Hz to {:+.2f} dB at {:.0f} Hz", low.db,
                             low.frequency, high.db, high.frequency),
                 12.0, Palette::kInk, Align::left, true);
}

} // namespace

std::string drawResponse(const Response &response, PictureFormat format)
{
    Drawing drawing(format, kWidth, kHeight);
    drawing.text({kLeft, 34.0}, "Frequency response", 19.0, Palette::kInk, Align::left, true);
    drawing.text({kLeft, 56.0},
                 fmt::format("Cutoffs {:.0f}, {:.0f} and {:.0f} Hz", response.cutoffs[0], response.cutoffs[1],
                             response.cutoffs[2]),
                 12.5, Palette::kFaintInk);
    drawBands(drawing, response);
    drawRipple(drawing, response);
    return drawing.finish();
}

} // namespace App
