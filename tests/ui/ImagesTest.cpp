#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "tests/ui/Catalogue.h"
#include "ui/native/EmbeddedFiles.h"
#include "ui/native/Pixmap.h"

using namespace UI::Native;

// The images as the controls need them: right in size and type, and told apart by eye.

namespace {

/// Red, green and blue as seen on a dark ground.
using Picture = std::vector<std::array<int, 3>>;

constexpr int kGround = 0x30;

PixmapRef load(const std::string &name)
{
    PixmapRef pixmap = loadPixmap((name + ".png").c_str());
    EXPECT_TRUE(pixmap) << name;
    return pixmap;
}

Picture ground(const Pixmap &size)
{
    return Picture(size_t{size.stride} * size.height, {kGround, kGround, kGround});
}

Picture over(Picture below, const Pixmap &pixmap)
{
    for (size_t i = 0; i < below.size(); ++i) {
        const uint32_t pixel = pixmap.pixels[i];
        const int clear = static_cast<int>(pixel >> 24);
        for (int channel = 0; channel < 3; ++channel) {
            const int level = pixel >> (16 - 8 * channel) & 0xFF;
            below[i][channel] = (below[i][channel] * clear + level * (255 - clear)) / 255;
        }
    }
    return below;
}

Picture seen(const std::string &name)
{
    const PixmapRef pixmap = load(name);
    return over(ground(*pixmap), *pixmap);
}

/// How much of the picture an eye would see changed.
double changedPart(const Picture &a, const Picture &b)
{
    constexpr int kVisible = 24; // levels of 255
    if (a.size() != b.size()) return 1.0;
    size_t changed = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        int most = 0;
        for (int channel = 0; channel < 3; ++channel)
            most = std::max(most, std::abs(a[i][channel] - b[i][channel]));
        changed += most > kVisible;
    }
    return static_cast<double>(changed) / static_cast<double>(a.size());
}

constexpr double kPlainlyDifferent = 0.05;

/// How much of the image lets more than half of the ground through.
double clearPart(const Pixmap &pixmap)
{
    const uint32_t *const pixels = pixmap.pixels.get();
    const size_t count = size_t{pixmap.stride} * pixmap.height;
    const auto clear =
        std::count_if(pixels, pixels + count, [](uint32_t pixel) { return pixel >> 24 > 127; });
    return static_cast<double>(clear) / static_cast<double>(count);
}

TEST(Images, HaveTheirSizesAndTypes)
{
    constexpr size_t kDepthAt = 24, kTypeAt = 25;
    constexpr int kRgb = 2, kRgba = 6;
    for (const CatalogueRow &row : catalogue()) {
        SCOPED_TRACE(row.name);
        const EmbeddedData file = findEmbeddedFile(row.name.c_str());
        ASSERT_LT(kTypeAt, file.size);
        EXPECT_EQ(8, file.data[kDepthAt]);
        EXPECT_EQ(row.isRgba ? kRgba : kRgb, file.data[kTypeAt]);
        const PixmapRef pixmap = loadPixmap(row.name.c_str());
        ASSERT_TRUE(pixmap);
        EXPECT_EQ(row.width, pixmap->width);
        EXPECT_EQ(row.height, pixmap->height);
        EXPECT_EQ(static_cast<uint32_t>(row.width), pixmap->stride);
        EXPECT_TRUE(row.isRgba || !pixmap->hasAlpha);
    }
}

TEST(Images, AreNeitherBlankNorCopies)
{
    std::map<std::vector<uint32_t>, std::string> known;
    for (const CatalogueRow &row : catalogue()) {
        const PixmapRef pixmap = loadPixmap(row.name.c_str());
        ASSERT_TRUE(pixmap) << row.name;
        const uint32_t *const pixels = pixmap->pixels.get();
        std::vector<uint32_t> picture(pixels, pixels + size_t{pixmap->stride} * pixmap->height);
        EXPECT_NE(picture.end(), std::adjacent_find(picture.begin(), picture.end(), std::not_equal_to<>()))
            << row.name << " is blank";
        picture.push_back(static_cast<uint32_t>(row.width));
        const auto [other, isNew] = known.emplace(std::move(picture), row.name);
        EXPECT_TRUE(isNew) << row.name << " is a copy of " << other->second;
    }
}

TEST(Images, ShowTheStatesOfAControlApart)
{
    std::vector<std::vector<std::string>> controls = {
        {"GainReductionMeter_Off", "GainReductionMeter_On"},
        {"LevelMeter_Large_Off", "LevelMeter_Large_On"},
        {"LevelMeter_Small_Off", "LevelMeter_Small_On"},
        {"Slider_Handle_Normal", "Slider_Handle_Pressed"},
        {"LevelMeterReadout_Numbers_Green", "LevelMeterReadout_Numbers_Red",
         "LevelMeterReadout_Numbers_Yellow"},
    };
    for (const std::string stem : {"Button_Bypass", "Button_Solo", "Button_LimiterBypass", "CheckBox"})
        controls.push_back(
            {stem + "_Off_Normal", stem + "_Off_Pressed", stem + "_On_Normal", stem + "_On_Pressed"});
    for (const auto &states : controls)
        for (size_t i = 0; i < states.size(); ++i)
            for (size_t j = 0; j < i; ++j)
                EXPECT_GT(changedPart(seen(states[i]), seen(states[j])), kPlainlyDifferent)
                    << states[i] << " and " << states[j];
}

TEST(Images, ShowWhichControlHasTheFocus)
{
    const std::pair<std::string, std::vector<std::string>> overlays[] = {
        {"Button_FocusOverlay",
         {"Button_Bypass_Off_Normal", "Button_Bypass_On_Normal", "Button_Solo_On_Normal"}},
        {"CheckBox_FocusOverlay", {"CheckBox_Off_Normal", "CheckBox_On_Normal"}},
        {"Slider_FocusOverlay", {"Slider_Handle_Normal", "Slider_Handle_Pressed"}},
        {"TextEdit_FocusOverlay_Large", {"TextEdit_Background_Large"}},
        {"TextEdit_FocusOverlay_Small", {"TextEdit_Background_Small"}},
    };
    for (const auto &[overlay, controls] : overlays) {
        EXPECT_GT(clearPart(*load(overlay)), 0.5) << overlay << " hides what it lies on";
        for (const std::string &control : controls) {
            const Picture without = seen(control);
            const Picture with = over(without, *load(overlay));
            EXPECT_GT(changedPart(without, with), kPlainlyDifferent) << overlay << " on " << control;
        }
    }
}

/// A strip of digits is cut at these columns.
struct Glyph {
    char character;
    int32_t from, width;
};

constexpr Glyph kGlyphs[] = {{'0', 0, 6},  {'1', 6, 4},  {'2', 10, 6}, {'3', 16, 6}, {'4', 22, 6},
                             {'5', 28, 5}, {'6', 33, 6}, {'7', 39, 5}, {'8', 44, 6}, {'9', 50, 5},
                             {'.', 55, 3}, {'-', 58, 4}, {'I', 62, 3}, {'n', 65, 5}, {'f', 70, 4}};

/// The strongest opacity in columns `from` to `to`, the last excluded.
uint32_t ink(const Pixmap &pixmap, int32_t from, int32_t to)
{
    uint32_t most = 0;
    for (int32_t y = 0; y < pixmap.height; ++y)
        for (int32_t x = from; x < to; ++x)
            most = std::max(most, 255 - (pixmap.pixels[y * pixmap.stride + x] >> 24));
    return most;
}

TEST(Images, KeepDigitsWithinTheirColumns)
{
    constexpr uint32_t kPlain = 160, kFaint = 16; // of 255
    for (const char *name : {"TextEdit_Numbers", "LevelMeterReadout_Numbers_Green",
                             "LevelMeterReadout_Numbers_Red", "LevelMeterReadout_Numbers_Yellow"}) {
        const PixmapRef strip = load(name);
        for (const Glyph &glyph : kGlyphs) {
            const int32_t end = glyph.from + glyph.width;
            if (end > strip->width) break;
            EXPECT_GT(ink(*strip, glyph.from, end - 1), kPlain) << name << ' ' << glyph.character;
            if (glyph.character == 'f') continue; // always the last of a text, so it needs no gap
            EXPECT_LT(ink(*strip, end - 1, end), kFaint) << name << ' ' << glyph.character;
        }
    }
}

} // namespace
