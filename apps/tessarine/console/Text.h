#pragma once
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace App {

/// True if the names are equal, ignoring the case of A to Z.
bool sameName(std::string_view a, std::string_view b);

/// The `count` names most similar to `typed`, or all names if there are fewer. Names that contain `typed`
/// come first, then the others by Levenshtein distance. Ignores the case of A to Z.
std::vector<std::string> nearestNames(std::string_view typed, const std::vector<std::string> &names,
                                      size_t count);

/// `text` without the spaces and tabs at both ends.
std::string_view trimmed(std::string_view text);

/// Replaces each byte that is not part of valid UTF-8 by U+FFFD, also those of control characters and
/// noncharacters. File names may contain any bytes, but HTML and Cairo accept valid UTF-8 only.
std::string validUtf8(std::string_view text);

/// Parses the number at the start of `text` and removes it from `text`. Returns nullopt and leaves `text`
/// unchanged if there is no number or it does not fit the type.
template <class Number>
std::optional<Number> takeNumber(std::string_view &text)
{
    Number value{};
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<size_t>(rest - text.data()));
    return value;
}

/// Parses `text` as one number; returns nullopt if it contains anything else.
template <class Number>
std::optional<Number> readNumber(std::string_view text)
{
    const std::optional<Number> value = takeNumber<Number>(text);
    return text.empty() ? value : std::nullopt;
}

/// Reads a finite number and returns it in `unit`. The unit or a related one may follow, in any case and with
/// spaces: "1.2 kHz" or "1k" for Hz, "0.1 s" for ms, "3:1" for x:1, "-1 dB" for dBTP. Returns nullopt if
/// `text` is anything else.
std::optional<double> readQuantity(std::string_view text, std::string_view unit);

} // namespace App
