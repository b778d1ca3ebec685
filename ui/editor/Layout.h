#pragma once
#include <array>
#include <cstdint>

#include "platform/Geometry.h"

/// Positions of the controls in pixels from the editor's top left corner. The images determine the sizes.
/// resources/skin/shared.py reads the constants from this file and from the controls.
namespace UI::Layout {

constexpr int32_t kWidth = 547, kHeight = 488; // of the whole editor

constexpr std::array<int32_t, 4> kBandX = {7, 111, 215, 319};
constexpr int32_t kBandWidth = 99, kStripX = 423, kStripWidth = 117;
constexpr int32_t kBarTop = 236, kBarHeight = 24; // the panels' coloured title bars

constexpr Point kSpectrum{14, 24};
constexpr std::array<int32_t, 3> kCutoffX = {91, 223, 355};
constexpr int32_t kTopFieldY = 210;
constexpr Point kOutputSlider{460, 46}, kOutputEdit{481, kTopFieldY}, kOutputReadout{477, 39},
    kOutputMeter{485, 51};

// Positions in a band; x counts from its left edge.
constexpr Point kSolo{61, 240}, kBypass{78, 240}, kBandMeter{6, 268}, kReductionMeter{69, 268};
constexpr Point kThresholdSlider{47, 266};
constexpr int32_t kBandFieldX = 47;
constexpr int32_t kThresholdY = 400, kGainY = 415, kRatioY = 430, kAttackY = 445, kReleaseY = 460;

constexpr Point kLimiterBypass{519, 240};
constexpr int32_t kLimiterFieldX = 481;
constexpr int32_t kLimiterThresholdY = 268, kLimiterMarginY = 283, kLimiterAttackY = 298,
                  kLimiterReleaseY = 313;
constexpr int32_t kCheckX = 517, kSpectrumOnInputY = 373, kBrickwallY = 393, kBandLinkY = 413;

constexpr Rect kSwitchHotRect{1, 15, 1, 15}; // in the image of a solo or bypass button

constexpr Rect bandBar(uint32_t band) { return Rect::at({kBandX[band], kBarTop}, kBandWidth, kBarHeight); }
constexpr Rect limiterBar() { return Rect::at({kStripX, kBarTop}, kStripWidth, kBarHeight); }
/// The rectangle around all four bars.
constexpr Rect bandBars() { return {bandBar(0).left, bandBar(3).right, kBarTop, kBarTop + kBarHeight - 1}; }

} // namespace UI::Layout
