#include "apps/tessarine/console/Text.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace App {

namespace {

std::string lowered(std::string_view text)
{
    std::string result(text);
    for (char &c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

size_t editDistance(const std::string &a, const std::string &b)
{
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i);
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t changed = diagonal + (a[i - 1] != b[j - 1]);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

struct RelatedUnit {
    std::string_view unit, typed;
    double factor; // of a value in the typed unit
};
constexpr RelatedUnit kRelatedUnits[] = {
    {"Hz", "k", 1000.0}, {"Hz", "kHz", 1000.0}, {"ms", "s", 1000.0},   {"s", "ms", 0.001},
    {"x:1", ":1", 1.0},  {"dBTP", "dB", 1.0},   {"LUFS", "LKFS", 1.0},
};

std::optional<double> factorOf(std::string_view typed, std::string_view unit)
{
    if (typed.empty() || sameName(typed, unit)) return 1.0;
    for (const RelatedUnit &related : kRelatedUnits) {
        if (related.unit == unit && sameName(related.typed, typed)) return related.factor;
    }
    return std::nullopt;
}

bool isPrintable(uint32_t code)
{
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool isNoncharacter = (code >= 0xFDD0 && code <= 0xFDEF) || (code & 0xFFFE) == 0xFFFE;
    return !isControl && !isNoncharacter;
}

/// Number of bytes of the printable UTF-8 character at the start of `text`; 0 if there is none.
size_t characterLength(std::string_view text)
{
    constexpr uint32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000}; // by length; lower codes have shorter forms
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80) return isPrintable(first) ? 1 : 0;
    const size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (first < 0xC0 || first > 0xF7 || text.size() < length) return 0;
    uint32_t code = first & (0x7Fu >> length);
    for (const char byte : text.substr(1, length - 1)) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value & 0xC0) != 0x80) return 0;
        code = code << 6 | (value & 0x3F);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool isValid = code >= kLowest[length] && code <= 0x10FFFF && !isSurrogate;
    return isValid && isPrintable(code) ? length : 0;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string validUtf8(std::string_view text)
{
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD
    std::string result;
    while (!text.empty()) {
        const size_t length = characterLength(text);
        result += length == 0 ? kReplacement : text.substr(0, length);
        text.remove_prefix(std::max(length, size_t{1}));
    }
    return result;
}

std::optional<double> readQuantity(std::string_view text, std::string_view unit)
{
    text = trimmed(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::optional<double> value = takeNumber<double>(text);
    std::string suffix(text);
    std::erase(suffix, ' ');
    const std::optional<double> factor = factorOf(suffix, unit);
    if (!value || !std::isfinite(*value) || !factor) return std::nullopt;
    if (*factor == 1.0) return value;
    return std::round(*value * *factor * 1e9) / 1e9; // 1.005 kHz is 1005 Hz, not 1004.9999999999999 Hz
}

bool sameName(std::string_view a, std::string_view b) { return lowered(a) == lowered(b); }

std::vector<std::string> nearestNames(std::string_view typed, const std::vector<std::string> &names,
                                      size_t count)
{
    const std::string wanted = lowered(typed);
    std::vector<std::pair<size_t, std::string>> ranked;
    for (const std::string &name : names) {
        const std::string candidate = lowered(name);
        const bool contains = !wanted.empty() && candidate.find(wanted) != std::string::npos;
        ranked.emplace_back(contains ? 0 : editDistance(wanted, candidate), name);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    ranked.resize(std::min(count, ranked.size()));
    std::vector<std::string> nearest;
    for (auto &[distance, name] : ranked) nearest.push_back(std::move(name));
    return nearest;
}

} // namespace App
