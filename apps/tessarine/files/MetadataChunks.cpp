#include "apps/tessarine/files/MetadataChunks.h"

#include <algorithm>
#include <cctype>

#include "apps/tessarine/console/Text.h"
#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

namespace {

constexpr size_t kMostChunks = 10000; // a damaged file may contain millions of empty ones

/// Describe the samples, fill space or hold peaks. The first line is for WAV, the second for AIFF, the third for CAF.
constexpr std::string_view kNotMetadata[] = {"fmt ", "data", "fact", "ds64", "PEAK", "levl",
                                             "JUNK", "junk", "PAD ", "pad ", "FLLR", "bad ",
                                             "slnt", "COMM", "SSND", "FVER", //
                                             "desc", "pakt", "chan", "free", "kuki", "peak"};

bool isMetadata(std::string_view name)
{
    return std::ranges::find(kNotMetadata, name) == std::end(kNotMetadata);
}

bool isChunkName(std::string_view name)
{
    return std::ranges::all_of(name, [](unsigned char c) { return std::isprint(c) != 0; });
}

std::string shown(std::string_view name) { return isChunkName(name) ? std::string(name) : "unknown data"; }

std::string readStart(TemporaryFile &file, int64_t position, int64_t count)
{
    std::string bytes(static_cast<size_t>(count), '\0');
    file.seek(position, SEEK_SET);
    file.get(bytes.data(), count);
    return bytes;
}

void overwrite(TemporaryFile &file, int64_t position, std::string_view bytes)
{
    file.seek(position, SEEK_SET);
    file.put(bytes.data(), static_cast<int64_t>(bytes.size()));
}

} // namespace

std::string MetadataChunk::shownName() const
{
    return name == "LIST" ? "LIST " + shown(bytes.substr(0, 4)) : std::string(trimmed(shown(name)));
}

bool MetadataChunk::hasPositions() const
{
    constexpr std::string_view kNames[] = {"cue ", "plst", "smpl", "r64m", "LIST adtl", "MARK", "INST"};
    const std::string full = name == "LIST" ? shownName() : name;
    return std::ranges::find(kNames, full) != std::end(kNames);
}

std::vector<MetadataChunk> readChunks(FileBytes &file, uint64_t mostBytes, MetadataLoss &loss)
{
    std::vector<MetadataChunk> chunks;
    uint64_t total = 0;
    ChunkWalker walker(file);
    for (size_t count = 0; const std::optional<ChunkWalker::Chunk> chunk = walker.next(); ++count) {
        if (chunk->isAudio && (chunk->length == 0 || chunk->length > file.size()))
            break;                                                 // to the end of the file
        if (chunk->name == std::string_view("\0\0\0\0", 4)) break; // padding
        if (!isMetadata(chunk->name)) continue;
        const bool isWhole = chunk->begin <= file.size() && chunk->length <= file.size() - chunk->begin;
        if (!isWhole || !isChunkName(chunk->name)) {
            loss.add(MetadataLoss::Reason::damaged, shown(chunk->name));
            break;
        }
        total += chunk->length;
        if (total > mostBytes || count > kMostChunks) {
            total -= chunk->length;
            loss.add(MetadataLoss::Reason::tooLarge, shown(chunk->name));
            if (count > kMostChunks) break;
            continue;
        }
        chunks.push_back({chunk->name, file.read(chunk->begin, chunk->length)});
    }
    return chunks;
}

void appendChunks(TemporaryFile &file, const std::vector<MetadataChunk> &chunks, MetadataLoss &loss)
{
    if (chunks.empty()) return;
    const std::string start = readStart(file, 0, 20);
    const bool bigEndian = start.starts_with("FORM"), is64Bit = start.starts_with("RF64");
    const int64_t padding = file.length() % 2;
    uint64_t length = static_cast<uint64_t>(file.length() + padding) - 8;
    for (const MetadataChunk &chunk : chunks) length += 8 + chunk.bytes.size() + chunk.bytes.size() % 2;
    if (!is64Bit && length >= kOpenLength32) {
        for (const MetadataChunk &chunk : chunks) loss.add(MetadataLoss::Reason::tooLarge, chunk.shownName());
        return;
    }
    overwrite(file, file.length(), std::string_view("\0", static_cast<size_t>(padding)));
    for (const MetadataChunk &chunk : chunks) {
        const size_t size = chunk.bytes.size();
        overwrite(file, file.length(), chunk.name + fromNumber(size, 4, bigEndian));
        overwrite(file, file.length(), chunk.bytes);
        overwrite(file, file.length(), std::string_view("\0", size % 2));
    }
    if (is64Bit)
        overwrite(file, 20, fromNumber(length, 8, bigEndian)); // in the chunk "ds64", which comes first
    else
        overwrite(file, 4, fromNumber(length, 4, bigEndian));
}

} // namespace App
