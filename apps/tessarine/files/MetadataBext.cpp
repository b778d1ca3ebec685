#include "apps/tessarine/files/MetadataBext.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <string_view>
#include <utility>

#include "apps/tessarine/console/Text.h"
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

/// A number of 64 bits in two XML elements.
struct TimeStamp {
    std::string_view high, low; // names
};
constexpr TimeStamp kTimeStamps[] = {
    {"TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI", "TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO"},
    {"BWF_TIME_REFERENCE_HIGH", "BWF_TIME_REFERENCE_LOW"}};

/// Position and length of the text of an XML element; nothing if it is missing.
std::optional<std::pair<size_t, size_t>> findElement(const std::string &xml, std::string_view name)
{
    const std::string tag = fmt::format("<{}>", name);
    const size_t begin = xml.find(tag);
    if (begin == std::string::npos) return std::nullopt;
    const size_t end = xml.find('<', begin + tag.size());
    if (end == std::string::npos) return std::nullopt;
    return std::pair(begin + tag.size(), end - begin - tag.size());
}

std::optional<uint32_t> readElement(const std::string &xml, std::string_view name)
{
    const auto place = findElement(xml, name);
    return place ? readNumber<uint32_t>(trimmed(std::string_view(xml).substr(place->first, place->second)))
                 : std::nullopt;
}

void writeElement(std::string &xml, std::string_view name, uint32_t value)
{
    if (const auto place = findElement(xml, name))
        xml.replace(place->first, place->second, std::to_string(value));
}

} // namespace

std::string changedIxml(std::string bytes, uint64_t start)
{
    for (const auto &[highName, lowName] : kTimeStamps) {
        const std::optional<uint32_t> high = readElement(bytes, highName), low = readElement(bytes, lowName);
        if (!high || !low) continue;
        const uint64_t time = (uint64_t{*high} << 32 | *low) + start;
        writeElement(bytes, highName, static_cast<uint32_t>(time >> 32));
        writeElement(bytes, lowName, static_cast<uint32_t>(time));
    }
    return bytes;
}

std::string changedBext(std::string bytes, const MetadataChanges &changes)
{
    if (bytes.size() < kLoudness + 2 * kFigures) return bytes; // shorter than the standard requires
    const uint64_t time = toNumber(bytes.substr(kTimeReference, 8), false);
    bytes.replace(kTimeReference, 8, fromNumber(time + changes.start, 8, false));
    if (toNumber(bytes.substr(kVersion, 2), false) >= 2) changeLoudness(bytes, changes.loudness);
    return bytes;
}

} // namespace App
