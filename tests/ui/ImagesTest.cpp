#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "ui/native/Pixmap.h"

using namespace UI::Native;

// The images as the controls need them: told apart by eye.

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
        for (const std::string &control : controls) {
            const Picture without = seen(control);
            const double changed = changedPart(without, over(without, *load(overlay)));
            EXPECT_GT(changed, kPlainlyDifferent) << overlay << " on " << control;
        }
    }
}

} // namespace
