#include "tests/ui/Catalogue.h"

namespace {

constexpr bool kRgb = false, kRgba = true;

struct Group {
    std::vector<std::string> names;
    int32_t width, height;
    bool isRgba;
};

std::vector<std::string> states(const std::string &stem)
{
    return {stem + "_Off_Normal", stem + "_Off_Pressed", stem + "_On_Normal", stem + "_On_Pressed"};
}

std::vector<std::string> labels(int first, int last)
{
    std::vector<std::string> names;
    for (int number = first; number <= last; ++number)
        names.push_back("TranslatedText" + std::to_string(number));
    return names;
}

std::vector<CatalogueRow> rows()
{
    const std::vector<Group> groups = {
        {{"Background"}, 547, 488, kRgb},
        {states("Button_Bypass"), 17, 17, kRgba},
        {states("Button_Solo"), 17, 17, kRgba},
        {{"Button_FocusOverlay"}, 17, 17, kRgba},
        {states("Button_LimiterBypass"), 15, 15, kRgb},
        {states("CheckBox"), 13, 13, kRgb},
        {{"CheckBox_FocusOverlay"}, 13, 13, kRgba},
        {{"GainReductionMeter_Off", "GainReductionMeter_On"}, 8, 123, kRgb},
        {{"LevelMeter_Large_Off", "LevelMeter_Large_On"}, 22, 150, kRgb},
        {{"LevelMeter_Small_Off", "LevelMeter_Small_On"}, 22, 123, kRgb},
        {{"LevelMeterReadout_Numbers_Green", "LevelMeterReadout_Numbers_Red",
          "LevelMeterReadout_Numbers_Yellow"},
         74,
         7,
         kRgba},
        {{"MultiBandSpectrum_Background"}, 377, 167, kRgb},
        {{"Slider_Track_Large"}, 16, 159, kRgb},
        {{"Slider_Track_Small"}, 16, 129, kRgb},
        {{"Slider_Handle_Normal", "Slider_Handle_Pressed", "Slider_FocusOverlay"}, 13, 13, kRgba},
        {{"TextEdit_Background_Large"}, 37, 13, kRgb},
        {{"TextEdit_Background_Small"}, 33, 13, kRgb},
        {{"TextEdit_FocusOverlay_Large"}, 37, 13, kRgba},
        {{"TextEdit_FocusOverlay_Small"}, 33, 13, kRgba},
        {{"TextEdit_Numbers"}, 62, 7, kRgba},
        {labels(0, 3), 55, 18, kRgba},
        {labels(4, 4), 111, 18, kRgba},
        {labels(5, 5), 90, 18, kRgba},
        {labels(6, 6), 111, 18, kRgba},
        {labels(7, 7), 48, 12, kRgba},
        {labels(8, 8), 27, 12, kRgba},
        {labels(9, 10), 55, 12, kRgba},
        {labels(11, 11), 54, 12, kRgba},
        {labels(12, 16), 42, 12, kRgba},
        {labels(17, 20), 54, 12, kRgba},
        {labels(21, 23), 90, 12, kRgba},
        {labels(24, 24), 53, 15, kRgba},
        {labels(25, 25), 48, 15, kRgba},
        {labels(26, 26), 46, 15, kRgba},
        {labels(27, 27), 50, 15, kRgba},
        {labels(28, 31), 55, 15, kRgba},
        {labels(32, 35), 54, 15, kRgba},
        {labels(36, 39), 67, 15, kRgba},
        {labels(40, 43), 78, 15, kRgba},
        {labels(44, 44), 65, 15, kRgba},
    };
    std::vector<CatalogueRow> all;
    for (const Group &group : groups)
        for (const std::string &name : group.names)
            all.push_back({name + ".png", group.width, group.height, group.isRgba});
    return all;
}

} // namespace

const std::vector<CatalogueRow> &catalogue()
{
    static const std::vector<CatalogueRow> table = rows();
    return table;
}
