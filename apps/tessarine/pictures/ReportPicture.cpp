#include "apps/tessarine/pictures/ReportPicture.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/pictures/Chart.h"
#include "apps/tessarine/pictures/Palette.h"
#include "apps/tessarine/render/Summary.h"

namespace App {

namespace {

double toDb(double linear) { return 20.0 * std::log10(std::max(linear, 1e-10)); }

std::string timeLabel(double seconds, double step)
{
    if (step < 1.0) return fmt::format("{:g} s", std::round(seconds * 1000.0) / 1000.0);
    const auto whole = static_cast<uint64_t>(std::lround(seconds));
    if (step >= 3600.0) return fmt::format("{} h", whole / 3600);
    return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

Axis timeAxis(double seconds)
{
    constexpr double kMostTicks = 12.0, kRounding = 1.0 + 1e-9; // decimal steps are not exact
    constexpr double kSteps[] = {0.001, 0.002, 0.005, 0.01, 0.02, 0.05,  0.1,  0.2, 0.5,
                                 1,     2,     5,     10,   15,   30,    60,   120, 300,
                                 600,   900,   1800,  3600, 7200, 14400, 36000};
    double step = kSteps[0];
    for (const double candidate : kSteps) {
        step = candidate;
        if (seconds <= kMostTicks * step * kRounding) break;
    }
    Axis axis{.low = 0.0, .high = seconds, .ticks = {}};
    for (int i = 0; i * step <= seconds * kRounding; ++i)
        axis.ticks.push_back({i * step, timeLabel(i * step, step)});
    return axis;
}

/// The axis of all gain reduction charts; covers the maximum reduction.
Axis reductionAxis(const History &history)
{
    double deepest = 0.0;
    for (int i = 0; i < Column::kGains; ++i) deepest = std::min(deepest, history.total().leastGainDb(i));
    double range = 3.0;
    for (const double wider : {3.0, 6.0, 9.0, 12.0, 15.0, 18.0, 24.0, 36.0, 48.0, 72.0, 96.0}) {
        range = wider;
        if (range >= -deepest) break;
    }
    Axis axis{.low = -range, .high = 0.0, .ticks = {{0.0, "0"}}};
    for (int i = 1; i <= 3; ++i)
        axis.ticks.push_back({-range * i / 3.0, fmt::format("{:g}", -range * i / 3.0)});
    return axis;
}

class Picture {
public:
    Picture(const RenderOptions &renderOptions, const Rendering &result, PictureFormat format)
        : options(renderOptions),
          rendering(result),
          summary(summarise(options, rendering)),
          drawing(format, kWidth, kHeight),
          time(timeAxis(static_cast<double>(result.history.total().frames) / result.rate))
    {
    }

    std::string draw()
    {
        title();
        levels();
        for (int i = 0; i < Column::kGains; ++i) reduction(i);
        return drawing.finish();
    }

private:
    static constexpr double kWidth = 1100.0, kLeft = 76.0, kRight = kWidth - 24.0; // points
    static constexpr double kLevelTop = 118.0, kLevelHeight = 220.0;
    static constexpr double kStripTop = kLevelTop + kLevelHeight + 48.0, kStripHeight = 84.0,
                            kStripStep = kStripHeight + 30.0;
    static constexpr double kHeight = kStripTop + kStripStep * Column::kGains + 34.0;
    static constexpr double kFloorDb = -60.0, kTopDb = 6.0;

    template <class Value>
    std::vector<Position> overTime(Value value) const
    {
        std::vector<Position> points;
        double begin = 0.0;
        for (const Column &column : rendering.history.columns()) {
            const double length = static_cast<double>(column.frames) / rendering.rate;
            points.push_back({begin + length / 2.0, value(column)});
            begin += length;
        }
        if (points.empty()) return points;
        points.insert(points.begin(), {0.0, points.front().y});
        points.push_back({begin, points.back().y});
        return points;
    }

    void title()
    {
        drawing.text({kLeft, 38.0},
                     options.in.filename().string() + "  \u2192  " + options.out.filename().string(), 19.0,
                     Palette::kInk, Align::left, true);
        constexpr size_t kPerLine = 4;
        const auto &rows = summary.levels.rows;
        double baseline = 60.0;
        for (size_t first = 1; first < rows.size(); first += kPerLine, baseline += 18.0) {
            std::string figures;
            for (size_t i = first; i < std::min(first + kPerLine, rows.size()); ++i)
                figures += fmt::format("{}{} {} \u2192 {}", i > first ? "      " : "", rows[i][0], rows[i][1],
                                       rows[i][2]);
            drawing.text({kLeft, baseline}, figures, 12.5, Palette::kFaintInk);
        }
    }

    void levels()
    {
        Axis level{.low = kFloorDb, .high = kTopDb, .ticks = {}, .title = "Level (dBFS)"};
        for (double db = kFloorDb; db <= 0.0; db += 12.0)
            level.ticks.push_back({db, fmt::format("{:g}", db)});
        Axis bare = time;
        bare.labelled = false;
        Chart chart(drawing, {kLeft, kLevelTop, kRight, kLevelTop + kLevelHeight}, bare, level);
        const auto peakIn = overTime([](const Column &c) { return toDb(c.peakIn); });
        const auto peakOut = overTime([](const Column &c) { return toDb(c.peakOut); });
        chart.area(peakIn, kFloorDb, Palette::kInput, 0.25);
        chart.area(peakOut, kFloorDb, Palette::kOutput, 0.14);
        chart.curve(peakIn, Palette::kInput, 0.8);
        chart.curve(peakOut, Palette::kOutput, 0.8);
        chart.curve(overTime([](const Column &c) { return toDb(c.rmsIn()); }), Palette::kInput, 2.0);
        chart.curve(overTime([](const Column &c) { return toDb(c.rmsOut()); }), Palette::kOutput, 2.0);
        chart.finish();
        chart.legend({{"In", Palette::kInput}, {"Out", Palette::kOutput}});
        drawing.text({kLeft, kLevelTop - 8.0}, "Level: peak (thin line), RMS (thick line)", 12.0,
                     Palette::kInk, Align::left, true);
    }

    void reduction(int gain)
    {
        const double top = kStripTop + gain * kStripStep;
        const bool isLimiter = gain == Column::kLimiter;
        const Colour colour = isLimiter ? Palette::kLimiter : Palette::kBands[static_cast<size_t>(gain)];
        Axis axis = time;
        axis.labelled = isLimiter;
        axis.title = isLimiter ? "Time" : "";
        Axis db = reductionAxis(rendering.history);
        db.title = gain == Column::kGains / 2 ? "Gain reduction (dB)" : "";
        Chart chart(drawing, {kLeft, top, kRight, top + kStripHeight}, axis, db);
        chart.area(overTime([gain](const Column &c) { return c.leastGainDb(gain); }), 0.0, colour, 0.28);
        chart.curve(overTime([gain](const Column &c) { return c.meanGainDb(gain); }), colour, 1.4);
        chart.finish();
        const auto &row = summary.reduction.rows[static_cast<size_t>(gain) + 1];
        drawing.text({kLeft, top - 7.0}, row[0], 12.0, colour, Align::left, true);
        drawing.text({kRight, top - 7.0}, fmt::format("maximum {} (area), mean {} (line)", row[1], row[2]),
                     11.0, Palette::kFaintInk, Align::right);
    }

    const RenderOptions &options;
    const Rendering &rendering;
    const Summary summary;
    Drawing drawing;
    const Axis time;
};

} // namespace

std::string drawReport(const RenderOptions &options, const Rendering &rendering, PictureFormat format)
{
    return Picture(options, rendering, format).draw();
}

} // namespace App
