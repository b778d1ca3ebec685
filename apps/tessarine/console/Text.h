#pragma once
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace App {

/// Equal but for the case of the letters A to Z.
bool sameName(std::string_view a, std::string_view b);

/// Up to `count` of the names that a person may have meant by `typed`, nearest first: by the number of
/// letters to change, insert or remove (Levenshtein), where a name that contains what was typed comes first.
std::vector<std::string> nearestNames(std::string_view typed, const std::vector<std::string> &names,
                                      size_t count);

/// Takes the number at the start of `text` off it; nothing if there is none or it is out of range.
template <class Number>
std::optional<Number> takeNumber(std::string_view &text)
{
    Number value{};
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<size_t>(rest - text.data()));
    return value;
}

/// The whole of `text` as a number.
template <class Number>
std::optional<Number> readNumber(std::string_view text)
{
    const std::optional<Number> value = takeNumber<Number>(text);
    return text.empty() ? value : std::nullopt;
}

} // namespace App
