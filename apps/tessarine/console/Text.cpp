#include "apps/tessarine/console/Text.h"

#include <algorithm>
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

} // namespace

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
