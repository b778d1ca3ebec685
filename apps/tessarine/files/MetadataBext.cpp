#include "apps/tessarine/files/MetadataBext.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "apps/tessarine/files/Chunks.h"

namespace App {

namespace {

// Positions in the chunk, in bytes
constexpr size_t kTimeReference = 338, kVersion = 346, kLoudness = 412;
constexpr size_t kFigures = 5; // value, range, true peak, momentary, short-term: 16 bits each
constexpr uint64_t kNotSet = 0x7FFF;

uint64_t toField(double value)
{
    if (!std::isfinite(value)) return kNotSet;
    return static_cast<uint16_t>(std::lround(std::clamp(value, -327.0, 327.0) * 100.0));
}

void changeLoudness(std::string &bytes, const std::optional<MeasuredLoudness> &measured)
{
    // writers that do not measure often leave zeros instead of the value for "not set"
    if (bytes.find_first_not_of('\0', kLoudness) >= kLoudness + 2 * kFigures) return;
    const MeasuredLoudness m = measured.value_or(MeasuredLoudness{});
    const std::array<double, kFigures> values = {m.loudness, m.range, m.truePeak, m.maxMomentary,
                                                 m.maxShortTerm};
    for (size_t i = 0; i < kFigures; ++i) {
        const size_t position = kLoudness + 2 * i;
        if (toNumber(bytes.substr(position, 2), false) == kNotSet) continue;
        bytes.replace(position, 2, fromNumber(measured ? toField(values[i]) : kNotSet, 2, false));
    }
}

} // namespace

std::string changedBext(std::string bytes, const MetadataChanges &changes)
{
    if (bytes.size() < kLoudness + 2 * kFigures) return bytes; // shorter than the standard requires
    const uint64_t time = toNumber(bytes.substr(kTimeReference, 8), false);
    bytes.replace(kTimeReference, 8, fromNumber(time + changes.start, 8, false));
    if (toNumber(bytes.substr(kVersion, 2), false) >= 2) changeLoudness(bytes, changes.loudness);
    return bytes;
}

} // namespace App
