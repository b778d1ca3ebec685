#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>

/// Converts levels to meter segments. The scales are linear in decibels.
namespace UI::Native::MeterScale {

/// Levels above this count as clipped: 20 log10(1.000001), so that a full-scale sample does not.
constexpr float kOverDb = 8.68e-6f;
constexpr float kLowestDb = -60.0f;
constexpr float kDeepestReductionDb = -30.0f;
constexpr int32_t kReductionSegments = 24;

/// Returns 0 to `segments`, or `segments` + 1 for a clipped level.
inline int32_t segmentOf(int32_t segments, float low, float db)
{
    db = std::max(db, low);
    if (db > kOverDb) return segments + 1;
    const float share = (db - low) / (kOverDb - low);
    const auto segment = static_cast<int32_t>(std::lround(share * static_cast<float>(segments + 1)));
    return std::clamp(segment, 0, segments);
}

inline int32_t reductionSegmentOf(float db)
{
    const float share = std::clamp(db, kDeepestReductionDb, 0.0f) / kDeepestReductionDb;
    const auto segment = static_cast<int32_t>(std::lround(share * static_cast<float>(kReductionSegments)));
    return std::clamp(segment, 0, kReductionSegments);
}

/// A bar rises at once and falls by one segment per update.
inline int32_t follow(int32_t shown, int32_t wanted) { return wanted >= shown ? wanted : shown - 1; }

} // namespace UI::Native::MeterScale
