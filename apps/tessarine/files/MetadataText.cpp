#include "apps/tessarine/files/MetadataText.h"

#include <algorithm>
#include <span>

#include "apps/tessarine/files/Chunks.h"
#include "apps/tessarine/files/MetadataId3.h"

namespace App {

namespace {

/// Name of a text chunk and of the tag.
struct TextName {
    std::string_view chunk;
    const char *tag;
};
constexpr TextName kInfoNames[] = {
    {"INAM", "TITLE"},     {"IART", "ARTIST"},    {"IPRD", "ALBUM"},       {"ICMT", "COMMENT"},
    {"IGNR", "GENRE"},     {"ICRD", "DATE"},      {"ITRK", "TRACKNUMBER"}, {"IPRT", "TRACKNUMBER"},
    {"ICOP", "COPYRIGHT"}, {"IMUS", "COMPOSER"},  {"ISRC", "ISRC"},        {"IENG", "ENGINEER"},
    {"ILNG", "LANGUAGE"},  {"IPUB", "LABEL"},     {"ISBJ", "SUBJECT"},     {"IKEY", "KEYWORDS"},
    {"ISFT", "ENCODING"},  {"IWRI", "LYRICIST"},  {"IMED", "MEDIA"},       {"IBPM", "BPM"},
    {"ITCH", "ENCODEDBY"}, {"ISTR", "PERFORMER"}, {"IEDT", "REMIXER"}};
constexpr TextName kAiffNames[] = {
    {"NAME", "TITLE"}, {"AUTH", "ARTIST"}, {"(c) ", "COPYRIGHT"}, {"ANNO", "COMMENT"}};

constexpr size_t kEntryHeader = 8; // bytes
constexpr size_t kMostEntries = 10000;

/// An entry of a LIST INFO chunk and its position there.
struct Entry {
    std::string_view name, text;
    size_t begin, end; // with header and pad byte
};

/// The entries up to the first damaged one, at most kMostEntries.
std::vector<Entry> infoEntries(std::string_view bytes)
{
    std::vector<Entry> entries;
    for (size_t position = 4; position + kEntryHeader <= bytes.size() && entries.size() < kMostEntries;) {
        const uint64_t length = toNumber(bytes.substr(position + 4, 4), false);
        if (length > bytes.size() - position - kEntryHeader) break;
        const std::string_view text = bytes.substr(position + kEntryHeader, length);
        const size_t end = std::min(position + kEntryHeader + (length + 1) / 2 * 2, bytes.size());
        entries.push_back({bytes.substr(position, 4), text.substr(0, text.find('\0')), position, end});
        position = end;
    }
    return entries;
}

std::string infoEntry(std::string_view name, std::string text)
{
    text += '\0';
    std::string entry = std::string(name) + fromNumber(text.size(), 4, false) + text;
    if (entry.size() % 2 != 0) entry += '\0';
    return entry;
}

void addText(MetadataTags &tags, std::span<const TextName> names, std::string_view name,
             std::string_view text)
{
    const auto found = std::ranges::find(names, name, &TextName::chunk);
    if (found == names.end() || text.empty()) return;
    tags.text[found->tag].append(toTagString(text));
}

/// The values of a tag on one line each.
std::string joined(const TagLib::StringList &values) { return values.toString("\n").to8Bit(true); }

/// True if text chunks of these names hold all tags.
bool fits(const MetadataTags &tags, std::span<const TextName> names)
{
    return tags.pictures.empty() && std::ranges::all_of(tags.text, [&](const auto &tag) {
               return std::ranges::any_of(names, [&](const TextName &name) { return tag.first == name.tag; });
           });
}

/// An ID3v2 tag with all but the comment, which changes with every rendering, in its text chunk only.
MetadataChunk id3Chunk(const char *name, MetadataTags tags)
{
    tags.text.erase("COMMENT");
    return {name, makeId3(tags)};
}

} // namespace

bool isInfo(const MetadataChunk &chunk) { return chunk.name == "LIST" && chunk.bytes.starts_with("INFO"); }

bool isId3(const MetadataChunk &chunk) { return chunk.name == "id3 " || chunk.name == "ID3 "; }

bool isText(const MetadataChunk &chunk)
{
    return isInfo(chunk) || isId3(chunk) ||
           std::ranges::any_of(kAiffNames, [&](const TextName &name) { return chunk.name == name.chunk; });
}

std::string infoWithSettings(std::string bytes, const std::string &line)
{
    size_t end = 4;
    for (const Entry &entry : infoEntries(bytes)) {
        end = entry.end;
        if (entry.name != "ICMT") continue;
        const std::string changed = infoEntry("ICMT", withSettings(entry.text, line));
        return bytes.replace(entry.begin, entry.end - entry.begin, changed);
    }
    return bytes.insert(end, infoEntry("ICMT", line));
}

MetadataTags readTextChunks(const std::vector<MetadataChunk> &chunks, uint64_t mostBytes, MetadataLoss &loss)
{
    MetadataTags tags, text;
    for (const MetadataChunk &chunk : chunks) {
        if (isId3(chunk) && chunk.bytes.size() > mostBytes) {
            loss.add(MetadataLoss::Reason::tooLarge, chunk.shownName());
        } else if (isId3(chunk)) {
            tags.addMissing(readId3(chunk.bytes, loss));
        } else if (isInfo(chunk)) {
            for (const Entry &entry : infoEntries(chunk.bytes))
                addText(text, kInfoNames, entry.name, entry.text);
        } else {
            addText(text, kAiffNames, chunk.name,
                    std::string_view(chunk.bytes).substr(0, chunk.bytes.find('\0')));
        }
    }
    tags.addMissing(text);
    return tags;
}

std::vector<MetadataChunk> makeWavChunks(const MetadataTags &tags)
{
    std::vector<MetadataChunk> chunks;
    std::string info = "INFO";
    for (const auto &entry : tags.text) {
        const auto name =
            std::ranges::find_if(kInfoNames, [&](const TextName &known) { return entry.first == known.tag; });
        if (name != std::end(kInfoNames)) info += infoEntry(name->chunk, joined(entry.second));
    }
    if (info.size() > 4) chunks.push_back({"LIST", info});
    if (!fits(tags, kInfoNames)) chunks.push_back(id3Chunk("id3 ", tags));
    return chunks;
}

std::vector<MetadataChunk> makeAiffChunks(const MetadataTags &tags)
{
    std::vector<MetadataChunk> chunks;
    for (const TextName &name : kAiffNames) {
        if (!tags.text.contains(name.tag)) continue;
        for (const TagLib::String &value : tags.text[name.tag])
            chunks.push_back({std::string(name.chunk), value.to8Bit(true)});
    }
    if (!fits(tags, kAiffNames)) chunks.push_back(id3Chunk("ID3 ", tags));
    return chunks;
}

} // namespace App
