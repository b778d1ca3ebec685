#pragma once
#include <string>
#include <vector>

#include "apps/tessarine/effect/ParameterTable.h"

namespace App {

/// Sets the parameters from strings such as "NAME=VALUE". Names are case-insensitive. Values are in the
/// parameter's own unit; that or a related unit may follow, as in readQuantity. Boolean values are on/off, true/false, yes/no or 1/0.
/// Errors  Failure that lists similar names or the range
void applySettings(EffectHost &host, const std::vector<std::string> &settings);

/// True if one of the settings is for the parameter called `name`.
bool assigns(const std::vector<std::string> &settings, const std::string &name);

} // namespace App
