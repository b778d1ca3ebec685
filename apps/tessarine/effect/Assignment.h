#pragma once
#include <string>
#include <vector>

#include "apps/tessarine/effect/ParameterTable.h"

namespace App {

/// Carries out each "NAME=VALUE": names in any case, values in the parameter's own unit, which may follow the
/// number; on/off, true/false, yes/no, 1/0 for switches.
/// Errors  Failure with the nearest names or the range
void applySettings(EffectHost &host, const std::vector<std::string> &settings);

/// Whether one of the settings is for the parameter of that name.
bool assigns(const std::vector<std::string> &settings, const std::string &name);

} // namespace App
