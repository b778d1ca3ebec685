#include "apps/tessarine/files/InputFile.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace fs = std::filesystem;

namespace {

constexpr uint64_t kOpenLength32 = 0xFFFFFFFF,
                   kOpenLength64 = UINT64_MAX; // the length was not known in advance

/// Position and announced length of the audio in a file, in bytes.
struct AudioBytes {
    uint64_t begin, length;
};

class Header {
public:
    explicit Header(const fs::path &path) : file(path, std::ios::binary) {}

    /// Reads `count` bytes, at most 16, at a position of the file; empty if the file ends before.
    std::string_view read(uint64_t position, size_t count)
    {
        file.clear();
        if (!file.seekg(static_cast<std::streamoff>(position)) ||
            !file.read(bytes.data(), static_cast<std::streamsize>(count)))
            return {};
        return {bytes.data(), count};
    }
    /// Reads an integer of `size` bytes; 0 if the file ends before.
    uint64_t number(uint64_t position, size_t size, bool bigEndian)
    {
        uint64_t value = 0;
        const std::string_view digits = read(position, size);
        for (size_t i = 0; i < digits.size(); ++i)
            value = value << 8 | static_cast<unsigned char>(digits[bigEndian ? i : size - 1 - i]);
        return value;
    }

private:
    std::ifstream file;
    std::array<char, 16> bytes{};
};

/// A format whose files consist of chunks: a name, a length and the content.
struct ChunkLayout {
    std::string_view container, audio; // first bytes of the file and of the audio chunk
    uint64_t first;                    // position of the first chunk
    uint64_t nameBytes, sizeBytes;
    bool bigEndian, sizeCountsHeader;
    uint64_t alignment; // of the chunks
};
constexpr ChunkLayout kLayouts[] = {{"RIFF", "data", 12, 4, 4, false, false, 2}, // WAV
                                    {"RF64", "data", 12, 4, 4, false, false, 2},
                                    {"FORM", "SSND", 12, 4, 4, true, false, 2},  // AIFF
                                    {"riff", "data", 40, 16, 8, false, true, 8}, // W64
                                    {"caff", "data", 8, 4, 8, true, false, 1}};

std::optional<AudioBytes> findAudio(Header &header, const ChunkLayout &layout)
{
    const uint64_t headerBytes = layout.nameBytes + layout.sizeBytes;
    uint64_t realLength = kOpenLength32; // RF64: of the audio, from the chunk "ds64"
    for (uint64_t position = layout.first;;) {
        const std::string name(header.read(position, 4));
        if (name.empty()) return std::nullopt;
        uint64_t length = header.number(position + layout.nameBytes, layout.sizeBytes, layout.bigEndian);
        if (layout.sizeCountsHeader) length -= std::min(length, headerBytes);
        position += headerBytes;
        if (name == "ds64") realLength = header.number(position + 8, 8, false);
        if (name == layout.audio) {
            if (layout.sizeBytes == 4 && length == kOpenLength32) length = realLength;
            return AudioBytes{position, length};
        }
        const uint64_t next =
            position + (length + layout.alignment - 1) / layout.alignment * layout.alignment;
        if (next <= position) return std::nullopt;
        position = next;
    }
}

std::optional<AudioBytes> findAudio(Header &header)
{
    const std::string container(header.read(0, 4));
    for (const ChunkLayout &layout : kLayouts) {
        if (container == layout.container) return findAudio(header, layout);
    }
    if (container == ".snd" || container == "dns.") { // AU, in either byte order
        const bool bigEndian = container == ".snd";
        return AudioBytes{header.number(4, 4, bigEndian), header.number(8, 4, bigEndian)};
    }
    return std::nullopt;
}

} // namespace

void requirePlainFile(const fs::path &path, const char *content)
{
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    if (status.type() == fs::file_type::none) // the name is too long, or a folder's permissions forbid it
        throw Failure(fmt::format("{} cannot be read: {}; check the name and the permissions", path.string(),
                                  problem.message()));
    if (!fs::exists(status)) throw Failure(fmt::format("{} does not exist; check the name", path.string()));
    if (fs::is_directory(status))
        throw Failure(fmt::format("{} is a folder; name {} in it", path.string(), content));
    if (!fs::is_regular_file(status))
        throw Failure(fmt::format("{} is not a regular file; copy its content to one first", path.string()));
}

uint64_t missingAudioBytes(const fs::path &path)
{
    std::error_code ignored;
    const uint64_t fileSize = fs::file_size(path, ignored);
    Header header(path);
    const std::optional<AudioBytes> audio = findAudio(header);
    if (!audio || audio->length == kOpenLength32 || audio->length == kOpenLength64) return 0;
    const uint64_t present = fileSize - std::min(fileSize, audio->begin);
    return audio->length - std::min(audio->length, present);
}

} // namespace App
