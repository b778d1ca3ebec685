#pragma once
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

} // namespace App
