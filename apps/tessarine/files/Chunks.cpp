#include "apps/tessarine/files/Chunks.h"

#include <algorithm>

namespace App {

namespace {

constexpr ChunkLayout kLayouts[] = {{"RIFF", "data", 12, 4, 4, false, false, 2}, // WAV
                                    {"RF64", "data", 12, 4, 4, false, false, 2},
                                    {"FORM", "SSND", 12, 4, 4, true, false, 2},  // AIFF
                                    {"riff", "data", 40, 16, 8, false, true, 8}, // W64
                                    {"caff", "data", 8, 4, 8, true, false, 1}};

} // namespace

FileBytes::FileBytes(const std::filesystem::path &path) : file(path, std::ios::binary)
{
    std::error_code problem;
    const uintmax_t size = std::filesystem::file_size(path, problem);
    if (!problem) fileSize = size;
}

std::string FileBytes::read(uint64_t position, uint64_t count)
{
    if (count > fileSize || position > fileSize - count) return {};
    std::string bytes(count, '\0');
    file.clear();
    if (!file.seekg(static_cast<std::streamoff>(position)) ||
        !file.read(bytes.data(), static_cast<std::streamsize>(count)))
        return {};
    return bytes;
}

uint64_t FileBytes::number(uint64_t position, size_t bytes, bool bigEndian)
{
    return toNumber(read(position, bytes), bigEndian);
}

uint64_t toNumber(std::string_view digits, bool bigEndian)
{
    uint64_t value = 0;
    for (size_t i = 0; i < digits.size(); ++i)
        value = value << 8 | static_cast<unsigned char>(digits[bigEndian ? i : digits.size() - 1 - i]);
    return value;
}

std::string fromNumber(uint64_t value, size_t bytes, bool bigEndian)
{
    std::string digits(bytes, '\0');
    for (size_t i = 0; i < bytes; ++i)
        digits[bigEndian ? bytes - 1 - i : i] = static_cast<char>(value >> 8 * i & 0xFF);
    return digits;
}

ChunkWalker::ChunkWalker(FileBytes &bytes) : file(bytes)
{
    const std::string container = file.read(0, 4);
    for (const ChunkLayout &known : kLayouts) {
        if (container == known.container) layout = &known;
    }
    if (layout) position = layout->first;
}

std::optional<ChunkWalker::Chunk> ChunkWalker::next()
{
    if (!layout) return std::nullopt;
    const uint64_t headerBytes = layout->nameBytes + layout->sizeBytes;
    const std::string name = file.read(position, 4);
    if (name.empty()) return std::nullopt;
    uint64_t length = file.number(position + layout->nameBytes, layout->sizeBytes, layout->bigEndian);
    if (layout->sizeCountsHeader) length -= std::min(length, headerBytes);
    const uint64_t begin = position + headerBytes;
    if (name == "ds64") realLength = file.number(begin + 8, 8, false);
    const bool isAudio = name == layout->audio;
    if (isAudio && layout->sizeBytes == 4 && length == kOpenLength32) length = realLength;
    const uint64_t padded = (length + layout->alignment - 1) / layout->alignment * layout->alignment;
    position = length <= file.size() ? begin + padded : file.size();
    return Chunk{name, isAudio, begin, length};
}

} // namespace App
