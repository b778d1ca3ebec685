#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fmt/format.h>
#include <map>
#include <regex>

#include "apps/tessarine/pictures/Palette.h"
#include "apps/tessarine/pictures/ReportPicture.h"
#include "apps/tessarine/pictures/ResponsePicture.h"
#include "apps/tessarine/render/Summary.h"

// The charts as SVG, read back: labels, grid lines and curves against the values that they show.

namespace {

using App::Box;
using App::Colour;
using App::Position;

constexpr double kNear = 0.05; // points

std::vector<std::smatch> findAll(const std::string &text, const std::regex &pattern)
{
    return {std::sregex_iterator(text.begin(), text.end(), pattern), {}};
}

/// An SVG file of cairo has glyphs instead of letters; a glyph's outline gives its letter.
class Svg {
public:
    struct Text {
        std::string words;
        Position at; // its left end
    };
    struct Path {
        double width;
        std::string colour;
        std::vector<Position> points;
    };

    explicit Svg(std::string file) : svg(std::move(file))
    {
        static const std::regex symbol("<symbol[^>]*id=\"([^\"]+)\">\\s*<path[^>]* d=\"([^\"]*)\""),
            path(
                "stroke-width:([0-9.]+);[^\"]*stroke:(rgb[^;]*);[^\"]*\"(?: transform[^ ]*)? d=\"([^\"]*)\""),
            number("-?[0-9.]+");
        for (const auto &match : findAll(svg, symbol)) outlines[match[1]] = match[2];
        for (const auto &match : findAll(svg, path)) {
            Path found{std::stod(match[1]), match[2], {}};
            const std::string data = match[3];
            const auto numbers = findAll(data, number);
            for (size_t i = 0; i + 1 < numbers.size(); i += 2)
                found.points.push_back({std::stod(numbers[i][0]), std::stod(numbers[i + 1][0])});
            paths.push_back(std::move(found));
        }
    }

    /// The outlines of all glyphs in the order of their use.
    std::vector<std::string> glyphs() const
    {
        std::vector<std::string> used;
        for (const auto &match : uses(svg)) used.push_back(outlines.at(match[1]));
        return used;
    }
    /// Horizontal ones.
    std::vector<Text> texts() const
    {
        static const std::regex group("<g style=\"fill[^>]*>((?:\\s*<use[^>]*>)+)");
        std::vector<Text> found;
        for (const auto &match : findAll(svg, group)) {
            Text text;
            const std::string body = match[1];
            for (const auto &use : uses(body)) {
                if (text.words.empty()) text.at = {std::stod(use[2]), std::stod(use[3])};
                text.words += letterOf(outlines.at(use[1]));
            }
            if (text.words.find('?') == std::string::npos) found.push_back(std::move(text));
        }
        return found;
    }
    /// The frames of the charts, from the top.
    std::vector<Box> frames() const
    {
        std::vector<Box> found;
        for (const Path &path : paths)
            if (path.points.size() == 5 && path.colour == nameOf(App::Palette::kFrame))
                found.push_back({path.points[0].x, path.points[0].y, path.points[2].x, path.points[2].y});
        return found;
    }
    bool hasGridLine(Position from, Position to) const
    {
        return std::ranges::any_of(paths, [&](const Path &path) {
            return path.colour == nameOf(App::Palette::kGrid) && path.width == 1.0 &&
                   near(path.points.front(), from) && near(path.points.back(), to);
        });
    }
    static bool near(Position a, Position b) { return std::hypot(a.x - b.x, a.y - b.y) < kNear; }
    static std::string nameOf(Colour colour)
    {
        const auto percent = [](double share) { return std::to_string(std::lround(100 * share)) + "%"; };
        return "rgb(" + percent(colour.red) + "," + percent(colour.green) + "," + percent(colour.blue) + ")";
    }

    std::vector<Path> paths;

private:
    static std::vector<std::smatch> uses(const std::string &text)
    {
        static const std::regex use("<use xlink:href=\"#([^\"]+)\" x=\"([^\"]+)\" y=\"([^\"]+)\"");
        return findAll(text, use);
    }
    static char letterOf(const std::string &outline)
    {
        static const std::map<std::string, char> letters = [] {
            std::map<std::string, char> made;
            std::string all;
            for (char letter = ' '; letter <= '~'; ++letter) all += letter;
            for (const double size : {11.0, 12.0, 12.5, 19.0})
                for (const bool bold : {false, true}) {
                    App::Drawing drawing(App::PictureFormat::svg, 2000.0, 100.0);
                    drawing.text({0.0, 50.0}, all, size, App::Palette::kInk, App::Align::left, bold);
                    const std::vector<std::string> used = Svg(drawing.finish()).glyphs();
                    for (size_t i = 0; i < used.size(); ++i) made.emplace(used[i], all[i]);
                }
            return made;
        }();
        const auto found = letters.find(outline);
        return found == letters.end() ? '?' : found->second;
    }

    const std::string svg;
    std::map<std::string, std::string> outlines;
};

double widthOf(const std::string &words)
{
    return App::Drawing(App::PictureFormat::svg, 100.0, 100.0).text({}, words, 11.0, App::Palette::kInk);
}

struct Label {
    std::string words;
    double share; // of the axis, from its low end
};

/// The labels are exactly these, each at its place and on a grid line.
void expectHorizontalAxis(const Svg &svg, const Box &frame, const std::vector<Label> &labels)
{
    size_t shown = 0;
    for (const Svg::Text &text : svg.texts())
        shown += text.at.y > frame.bottom + 10.0 && text.at.y < frame.bottom + 20.0;
    EXPECT_EQ(shown, labels.size());
    const auto texts = svg.texts();
    for (const auto &[words, share] : labels) {
        SCOPED_TRACE(words);
        const double x = frame.left + share * frame.width();
        EXPECT_TRUE(svg.hasGridLine({x, frame.top}, {x, frame.bottom})) << x;
        EXPECT_TRUE(std::ranges::any_of(texts, [&](const Svg::Text &text) {
            return text.words == words && Svg::near(text.at, {x - widthOf(words) / 2.0, frame.bottom + 16.0});
        })) << x;
    }
}

void expectVerticalAxis(const Svg &svg, const Box &frame, const std::vector<Label> &labels)
{
    std::vector<std::string> shown, wanted;
    for (const Svg::Text &text : svg.texts())
        if (text.at.x < frame.left && text.at.y > frame.top && text.at.y < frame.bottom + 5.0)
            shown.push_back(text.words);
    const auto texts = svg.texts();
    for (const auto &[words, share] : labels) {
        SCOPED_TRACE(words);
        wanted.push_back(words);
        const double y = frame.bottom - share * frame.height();
        EXPECT_TRUE(svg.hasGridLine({frame.left, y}, {frame.right, y})) << y;
        EXPECT_TRUE(std::ranges::any_of(texts, [&](const Svg::Text &text) {
            return text.words == words && Svg::near(text.at, {frame.left - 7.0 - widthOf(words), y + 4.0});
        })) << y;
    }
    EXPECT_THAT(shown, testing::UnorderedElementsAreArray(wanted));
}

/// A curve in that colour and width passes through the point.
bool passes(const Svg &svg, Colour colour, double width, Position point)
{
    return std::ranges::any_of(svg.paths, [&](const Svg::Path &path) {
        return path.colour == Svg::nameOf(colour) && path.width == width &&
               std::ranges::any_of(path.points, [&](Position each) { return Svg::near(each, point); });
    });
}

TEST(ResponsePicture, PutsLabelsAndCurvesAtTheirValues)
{
    App::Response response{.frequencies = {20.0, 200.0, 20000.0}, .bands = {}, .sum = {9.5, -0.5, 0.25}};
    for (size_t band = 0; band < 4; ++band) {
        const double db = -12.0 * static_cast<double>(band + 1);
        response.bands[band] = {db, db + 3.0, db};
    }
    const Svg svg(drawResponse(response, App::PictureFormat::svg));
    const std::vector<Box> frames = svg.frames();
    ASSERT_EQ(frames.size(), 2u);
    std::vector<Label> frequencies;
    for (const auto &[words, hz] : std::initializer_list<std::pair<const char *, double>>{{"20", 20},
                                                                                          {"50", 50},
                                                                                          {"100", 100},
                                                                                          {"200", 200},
                                                                                          {"500", 500},
                                                                                          {"1k", 1000},
                                                                                          {"2k", 2000},
                                                                                          {"5k", 5000},
                                                                                          {"10k", 10000},
                                                                                          {"20k", 20000}})
        frequencies.push_back({words, std::log10(hz / 20.0) / 3.0});
    std::vector<Label> levels;
    for (int db = -60; db <= 12; db += 6)
        levels.push_back({(db > 0 ? "+" : "") + std::to_string(db), (db + 60.0) / 72.0});
    const std::vector<Label> fine = {{"0", 1.0 / 11.0},  {"+2", 3.0 / 11.0}, {"+4", 5.0 / 11.0},
                                     {"+6", 7.0 / 11.0}, {"+8", 9.0 / 11.0}, {"+10", 1.0}};
    for (const Box &frame : frames) expectHorizontalAxis(svg, frame, frequencies);
    expectVerticalAxis(svg, frames[0], levels);
    expectVerticalAxis(svg, frames[1], fine);

    const auto at = [](const Box &frame, double share, double db, double low, double high) {
        return Position{frame.left + share * frame.width(),
                        frame.bottom - (db - low) / (high - low) * frame.height()};
    };
    for (size_t i = 0; i < 3; ++i) {
        const double share = std::log10(response.frequencies[i] / 20.0) / 3.0;
        for (size_t band = 0; band < 4; ++band)
            EXPECT_TRUE(passes(svg, App::Palette::kBands[band], 2.0,
                               at(frames[0], share, response.bands[band][i], -60.0, 12.0)));
        EXPECT_TRUE(passes(svg, App::Palette::kInk, 2.2, at(frames[0], share, response.sum[i], -60.0, 12.0)));
        EXPECT_TRUE(passes(svg, App::Palette::kInk, 2.0, at(frames[1], share, response.sum[i], -1.0, 10.0)));
    }
}

TEST(ReportPicture, PutsLabelsAndCurvesAtTheirValues)
{
    struct Length {
        double seconds, step;
        std::vector<const char *> labels;
    };
    const Length lengths[] = {
        {0.04,
         0.005,
         {"0 s", "0.005 s", "0.01 s", "0.015 s", "0.02 s", "0.025 s", "0.03 s", "0.035 s", "0.04 s"}},
        {5.5,
         0.5,
         {"0 s", "0.5 s", "1 s", "1.5 s", "2 s", "2.5 s", "3 s", "3.5 s", "4 s", "4.5 s", "5 s", "5.5 s"}},
        {70.0, 10.0, {"0:00", "0:10", "0:20", "0:30", "0:40", "0:50", "1:00", "1:10"}},
        {4000.0, 600.0, {"0:00", "10:00", "20:00", "30:00", "40:00", "50:00", "60:00"}},
        {40000.0,
         3600.0,
         {"0 h", "1 h", "2 h", "3 h", "4 h", "5 h", "6 h", "7 h", "8 h", "9 h", "10 h", "11 h"}}};
    for (const auto &[seconds, step, labels] : lengths) {
        SCOPED_TRACE(seconds);
        App::Rendering rendering;
        rendering.rate = 1000;
        const auto half = static_cast<uint64_t>(seconds * rendering.rate / 2.0);
        for (const double factor : {1.0, 0.5}) { // of the levels and, in dB, of the gains
            App::Column column{.frames = half};
            column.peakIn = static_cast<float>(0.5 * factor);
            column.peakOut = static_cast<float>(0.25 * factor);
            column.squaresIn = 0.01 * factor * factor * static_cast<double>(half);
            column.squaresOut = 0.001 * factor * factor * static_cast<double>(half);
            for (size_t gain = 0; gain < App::Column::kGains; ++gain)
                column.gainDbFrames[gain] = -factor * static_cast<double>((gain + 1) * half);
            column.leastGain[2] = 0.5f; // -6.02 dB: the scales end at -9 dB
            rendering.history.add(column);
        }
        const Svg svg(drawReport({}, rendering, App::PictureFormat::svg));
        const std::vector<Box> charts = svg.frames();
        ASSERT_EQ(charts.size(), 6u);

        std::vector<Label> times;
        for (size_t i = 0; i < labels.size(); ++i)
            times.push_back({labels[i], static_cast<double>(i) * step / seconds});
        for (size_t i = 0; i < charts.size(); ++i)
            expectHorizontalAxis(svg, charts[i], i == 5 ? times : std::vector<Label>{});
        expectVerticalAxis(svg, charts[0],
                           {{"-60", 0.0},
                            {"-48", 12 / 66.0},
                            {"-36", 24 / 66.0},
                            {"-24", 36 / 66.0},
                            {"-12", 48 / 66.0},
                            {"0", 60 / 66.0}});
        const auto passesAt = [&](double share, size_t chart, Colour colour, double width, double value) {
            const double low = chart == 0 ? -60.0 : -9.0, high = chart == 0 ? 6.0 : 0.0;
            const Box &frame = charts[chart];
            return passes(svg, colour, width,
                          {frame.left + share * frame.width(),
                           frame.bottom - (value - low) / (high - low) * frame.height()});
        };
        for (const auto &[share, factor] : {std::pair{0.25, 1.0}, {0.75, 0.5}}) {
            const double fall = 20.0 * std::log10(factor);
            EXPECT_TRUE(passesAt(share, 0, App::Palette::kInput, 0.8, 20.0 * std::log10(0.5) + fall));
            EXPECT_TRUE(passesAt(share, 0, App::Palette::kOutput, 0.8, 20.0 * std::log10(0.25) + fall));
            EXPECT_TRUE(passesAt(share, 0, App::Palette::kInput, 2.0, -20.0 + fall));
            EXPECT_TRUE(passesAt(share, 0, App::Palette::kOutput, 2.0, -30.0 + fall));
            for (size_t gain = 0; gain < App::Column::kGains; ++gain) {
                const Colour colour = gain == 4 ? App::Palette::kLimiter : App::Palette::kBands[gain];
                EXPECT_TRUE(passesAt(share, gain + 1, colour, 1.4, -factor * static_cast<double>(gain + 1)));
            }
        }
        for (size_t gain = 0; gain < App::Column::kGains; ++gain) {
            const Box &chart = charts[gain + 1];
            expectVerticalAxis(svg, chart, {{"0", 1.0}, {"-3", 2 / 3.0}, {"-6", 1 / 3.0}, {"-9", 0.0}});
            std::string caption;
            for (const Svg::Text &text : svg.texts())
                if (std::abs(text.at.y - (chart.top - 7.0)) < kNear) caption += text.words + " ";
            EXPECT_THAT(caption, testing::StartsWith(App::kGainNames[gain]));
            EXPECT_THAT(caption, testing::HasSubstr(gain == 2 ? " -6.0 dB" : " 0.0 dB"));
            EXPECT_THAT(caption,
                        testing::HasSubstr(fmt::format(" {:.1f} dB", -0.75 * static_cast<double>(gain + 1))));
        }
    }
}

} // namespace
