#include "apps/tessarine/editor/EditorControls.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/NearestNames.h"
#include "dsp/component/Bands.h"

namespace App {

std::vector<std::string> editorControls()
{
    std::vector<std::string> names = {"Output Gain Slider", "Output Gain", "Low Cutoff", "Mid Cutoff",
                                      "High Cutoff"};
    for (uint32_t band = 1; band <= DSP::kBands; ++band) {
        for (const char *control :
             {"Solo", "Bypass", "Threshold Slider", "Threshold", "Gain", "Ratio", "Attack", "Release"})
            names.push_back(fmt::format("Band {} {}", band, control));
    }
    names.insert(names.end(),
                 {"Limiter Bypass", "Limiter Threshold", "Limiter Margin", "Limiter Attack",
                  "Limiter Release", "Spectrum On Input", "Brickwall Limiter", "Link Band Controls"});
    return names;
}

size_t findEditorControl(const std::string &name)
{
    const std::vector<std::string> names = editorControls();
    for (size_t i = 0; i < names.size(); ++i) {
        if (sameName(names[i], name)) return i;
    }
    constexpr size_t kSuggestions = 3;
    throw Failure(fmt::format("the editor has no control '{}' for the keyboard; the nearest are '{}'", name,
                              fmt::join(nearestNames(name, names, kSuggestions), "', '")));
}

} // namespace App
