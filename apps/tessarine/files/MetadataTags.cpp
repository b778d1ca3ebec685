#include "apps/tessarine/files/MetadataTags.h"

#include <algorithm>
#include <cctype>

#include "plugin/Product.h"

namespace App {

namespace {

bool isSettings(std::string_view line)
{
    const std::string start = std::string(Product::kName) + " ";
    return line.starts_with(start) && line.size() > start.size() &&
           std::isdigit(static_cast<unsigned char>(line[start.size()]));
}

} // namespace

TagLib::ByteVector toByteVector(std::string_view bytes)
{
    return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

std::string toBytes(const TagLib::ByteVector &bytes) { return {bytes.data(), bytes.size()}; }

TagLib::String toTagString(std::string_view bytes)
{
    const std::string text(bytes);
    const TagLib::String string(text, TagLib::String::UTF8); // empty if the bytes are not valid
    return string.isEmpty() ? TagLib::String(text, TagLib::String::Latin1) : string;
}

bool isStaleTag(const TagLib::String &name)
{
    const std::string key = name.upper().to8Bit(true);
    return key == "ENCODER" || key.starts_with("REPLAYGAIN_") || key == "R128_TRACK_GAIN" ||
           key == "R128_ALBUM_GAIN" || key == "COMMENT:ITUNNORM" || key == "COMMENT:ITUNSMPB" ||
           key == "ITUNNORM" || key == "ITUNSMPB";
}

std::string withoutSettings(std::string_view comment)
{
    std::string kept;
    while (!comment.empty()) {
        const std::string_view line = comment.substr(0, comment.find('\n'));
        comment.remove_prefix(std::min(line.size() + 1, comment.size()));
        if (!isSettings(line)) kept += std::string(line) + "\n";
    }
    if (!kept.empty()) kept.pop_back();
    return kept;
}

std::string withSettings(std::string_view comment, const std::string &line)
{
    const std::string kept = withoutSettings(comment);
    return kept.empty() ? line : kept + "\n" + line;
}

void MetadataTags::addMissing(const MetadataTags &other)
{
    for (const auto &[name, values] : other.text) {
        if (!text.contains(name)) text.insert(name, values);
    }
    if (pictures.empty()) pictures = other.pictures;
}

void MetadataTags::useDescription()
{
    if (text.contains("COMMENT") || !text.contains("DESCRIPTION")) return;
    text.insert("COMMENT", text["DESCRIPTION"]);
    text.erase("DESCRIPTION");
}

void MetadataTags::removeStale()
{
    std::vector<TagLib::String> stale;
    for (const auto &[name, values] : text) {
        if (isStaleTag(name)) stale.push_back(name);
    }
    for (const TagLib::String &name : stale) text.erase(name);
}

void MetadataTags::setSettings(const std::string &line)
{
    TagLib::StringList comments;
    for (const TagLib::String &old : text["COMMENT"]) {
        const std::string kept = withoutSettings(old.to8Bit(true));
        if (!kept.empty()) comments.append(toTagString(kept));
    }
    if (comments.isEmpty())
        comments.append(toTagString(line));
    else
        comments[0] = toTagString(withSettings(comments[0].to8Bit(true), line));
    text.replace("COMMENT", comments);
}

} // namespace App
