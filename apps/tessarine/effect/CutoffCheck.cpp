#include "apps/tessarine/effect/CutoffCheck.h"

#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace {

constexpr double kFlatFromOctaves = 2.0;
constexpr const char *kNames[DSP::kCutoffs] = {"Low", "Mid", "High"};

} // namespace

void requireAscendingCutoffs(const DSP::CrossOver &crossOver)
{
    for (uint32_t i = 0; i + 1 < DSP::kCutoffs; ++i) {
        const float lower = crossOver.cutoff(i), upper = crossOver.cutoff(i + 1);
        if (lower > upper)
            throw Failure(
                fmt::format("'Crossover {} Cutoff' ({:.0f} Hz) lies above 'Crossover {} Cutoff' ({:.0f} Hz); "
                            "give them in ascending order",
                            kNames[i], lower, kNames[i + 1], upper));
    }
}

std::string closeCutoffsWarning(const DSP::CrossOver &crossOver, uint32_t rate)
{
    std::string pairs;
    for (uint32_t i = 0; i + 1 < DSP::kCutoffs; ++i) {
        const float lower = crossOver.cutoff(i), upper = crossOver.cutoff(i + 1);
        if (upper >= static_cast<float>(rate) * 0.5f) break;
        if (std::log2(static_cast<double>(upper) / static_cast<double>(lower)) >= kFlatFromOctaves) continue;
        pairs += fmt::format("{}{} ({:.0f} Hz) and {} ({:.0f} Hz)", pairs.empty() ? "" : ", ", kNames[i],
                             lower, kNames[i + 1], upper);
    }
    if (pairs.empty()) return {};
    return fmt::format(
        "crossover cutoffs {} are less than two octaves apart, so the sum of the bands dips between "
        "them; 'tessarine response' shows how far",
        pairs);
}

} // namespace App
