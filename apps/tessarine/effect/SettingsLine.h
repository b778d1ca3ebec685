#pragma once
#include <string>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

/// The settings that differ from the defaults, for a comment tag: "Tessarine 1.0.20: Gain=3, Band 2 Ratio=4". Limited to
/// a length that all formats and programs accept.
std::string settingsLine(const EffectHost &host);

} // namespace App
