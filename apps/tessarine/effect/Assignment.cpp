#include "apps/tessarine/effect/Assignment.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Text.h"

namespace App {

namespace {

constexpr size_t kSuggestions = 3;

std::string nameIn(const std::string &setting)
{
    return std::string(trimmed(std::string_view(setting).substr(0, setting.find('='))));
}

const Parameter &find(const std::vector<Parameter> &parameters, const std::string &name)
{
    std::vector<std::string> names;
    for (const Parameter &p : parameters) {
        if (sameName(p.name, name)) return p;
        names.push_back(p.name);
    }
    throw Failure(fmt::format("unknown parameter '{}'; similar names are '{}'; 'tessarine params' lists all",
                              name, fmt::join(nearestNames(name, names, kSuggestions), "', '")));
}

std::optional<double> readSwitch(std::string_view text)
{
    for (const char *word : {"on", "true", "yes", "1"}) {
        if (sameName(text, word)) return 1.0;
    }
    for (const char *word : {"off", "false", "no", "0"}) {
        if (sameName(text, word)) return 0.0;
    }
    return std::nullopt;
}

double readValue(const Parameter &parameter, std::string_view text)
{
    const bool isSwitch = parameter.kind == DSP::ParamKind::boolean;
    const std::optional<double> value = isSwitch ? readSwitch(text) : readQuantity(text, parameter.unit);
    const bool whole = parameter.kind != DSP::ParamKind::integer || (value && *value == std::floor(*value));
    if (!value || !whole || *value < parameter.minimum || *value > parameter.maximum)
        throw Failure(fmt::format("'{}' cannot be '{}'; give {}", parameter.name, text, parameter.range()));
    return *value;
}

} // namespace

void applySettings(EffectHost &host, const std::vector<std::string> &settings)
{
    const std::vector<Parameter> parameters = listParameters(host);
    for (const std::string &setting : settings) {
        const size_t equals = setting.find('=');
        const Parameter &parameter = find(parameters, nameIn(setting));
        parameter.set(host, readValue(parameter, trimmed(std::string_view(setting).substr(equals + 1))));
    }
}

bool assigns(const std::vector<std::string> &settings, const std::string &name)
{
    return std::any_of(settings.begin(), settings.end(),
                       [&](const std::string &setting) { return sameName(nameIn(setting), name); });
}

} // namespace App
