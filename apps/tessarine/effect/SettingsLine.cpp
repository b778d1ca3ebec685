#include "apps/tessarine/effect/SettingsLine.h"

#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/effect/ParameterTable.h"
#include "plugin/Product.h"

namespace App {

namespace {

constexpr size_t kMostCharacters = 1000;

/// Hosts set values in the range 0 to 1, which adds rounding errors.
std::string rounded(const Parameter &parameter, double value)
{
    constexpr double kSteps = 100.0;
    return parameter.format(std::round(value * kSteps) / kSteps);
}

} // namespace

std::string settingsLine(const EffectHost &host)
{
    std::string changed;
    for (const Parameter &p : listParameters(host)) {
        if (!p.changesAudio) continue;
        const std::string value = rounded(p, DSP::toNumber(p.address.value()));
        if (value == rounded(p, p.defaultValue)) continue;
        const std::string setting = fmt::format("{}{}={}", changed.empty() ? "" : ", ", p.name, value);
        if (changed.size() + setting.size() > kMostCharacters) {
            changed += ", ...";
            break;
        }
        changed += setting;
    }
    return fmt::format("{} {}: {}", Product::kName, Product::kVersionText,
                       changed.empty() ? "default settings" : changed);
}

} // namespace App
