#pragma once
#include <span>

#include "ui/window/TextSource.h"

namespace UI {

/// The editor's strings. Rows 0 to 3: band titles. Rows 4 to 23: labels; rows 12 to 16 appear in every band. Rows 24
/// to 44: tool tips.
constexpr uint32_t kTextRows = 45;
constexpr uint32_t kLimiterTitle = 5, kFirstBandLabel = 12, kLastBandLabel = 16;
constexpr uint32_t kSpectrumOnInputLabel = 21, kBrickwallLabel = 22, kBandLinkLabel = 23;
constexpr uint32_t kOutputGainTip = 24, kFirstCutoffTip = 25, kFirstSoloTip = 32, kFirstBypassTip = 36,
                   kFirstThresholdTip = 40, kLimiterBypassTip = 44;

const Native::TextRow &textRow(uint32_t index);

} // namespace UI
