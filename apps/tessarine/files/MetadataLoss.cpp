#include "apps/tessarine/files/MetadataLoss.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <span>

#include "apps/tessarine/console/Text.h"

namespace App {

namespace {

constexpr size_t kMostNames = 8; // in a remark

std::string list(std::vector<std::string> names)
{
    if (names.size() > kMostNames) {
        const size_t others = names.size() - kMostNames;
        names.resize(kMostNames);
        names.push_back(fmt::format("{} others", others));
    }
    const std::string last = names.back();
    names.pop_back();
    return names.empty() ? last : fmt::format("{} and {}", fmt::join(names, ", "), last);
}

} // namespace

void MetadataLoss::add(Reason reason, std::string_view name)
{
    std::vector<std::string> &list = names[reason];
    const std::string readable = validUtf8(trimmed(name));
    if (std::ranges::find(list, readable) == list.end()) list.push_back(readable);
}

void MetadataLoss::add(const MetadataLoss &other)
{
    for (const auto &[reason, list] : other.names)
        for (const std::string &name : list) add(reason, name);
}

std::vector<std::string> MetadataLoss::remarks(const std::string &in, const std::string &out) const
{
    std::vector<std::string> sentences;
    for (const auto &[reason, list] : names) {
        const bool several = list.size() > 1 || list[0].ends_with('s');
        const std::string subject =
            fmt::format("{} {} not kept, because", App::list(list), several ? "were" : "was");
        switch (reason) {
        case Reason::noPlace:
            if (sameName(out, ".w64") || sameName(out, ".caf") || sameName(out, ".au"))
                sentences.push_back(fmt::format("{} no metadata is written to {} files", subject, out));
            else if (sameName(in, out))
                sentences.push_back(
                    fmt::format("{} only text and pictures of {} files are copied", subject, in));
            else
                sentences.push_back(
                    fmt::format("{} {} files have no place for {}", subject, out, several ? "them" : "it"));
            if (sameName(in, ".wav") || sameName(in, ".aiff") || sameName(in, ".flac"))
                sentences.back() += fmt::format("; write a {} file to keep {}", in, several ? "them" : "it");
            break;
        case Reason::notRead:
            sentences.push_back(fmt::format("{} metadata of {} files is not read", subject, in));
            break;
        case Reason::excerpt:
            sentences.push_back(fmt::format("{} the positions are those of the whole file", subject));
            break;
        case Reason::damaged:
            sentences.push_back(fmt::format("{} the input contains damaged metadata", subject));
            break;
        case Reason::tooLarge:
            sentences.push_back(fmt::format("{} so much metadata does not fit", subject));
            break;
        }
    }
    return sentences;
}

} // namespace App
