#include "apps/tessarine/files/InputFile.h"

#include <array>
#include <fmt/format.h>
#include <fstream>
#include <string_view>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace fs = std::filesystem;

namespace {

/// RIFF files (WAV) and FORM files (AIFF) share one chunk structure; they differ in these values.
struct Layout {
    std::string_view container, soundChunk;
    bool bigEndian;
};
constexpr Layout kLayouts[] = {{"RIFF", "data", false}, {"FORM", "SSND", true}};

constexpr uint32_t kOpenLength = 0xFFFFFFFF; // written by programs that do not know the length yet

struct ChunkHeader {
    std::array<char, 8> bytes{};

    std::string_view name() const { return {bytes.data(), 4}; }
    uint32_t size(bool bigEndian) const
    {
        uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << 8 |
                    static_cast<unsigned char>(bytes[static_cast<size_t>(bigEndian ? 4 + i : 7 - i)]);
        return value;
    }
};

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

uint64_t missingSoundBytes(const fs::path &path)
{
    std::error_code ignored;
    const uint64_t fileSize = fs::file_size(path, ignored);
    std::ifstream file(path, std::ios::binary);
    ChunkHeader header;
    if (!file.read(header.bytes.data(), 8)) return 0;
    for (const Layout &layout : kLayouts) {
        if (header.name() != layout.container) continue;
        uint64_t position = 12; // first chunk, after the container's header and form type
        while (file.seekg(static_cast<std::streamoff>(position)) && file.read(header.bytes.data(), 8)) {
            const uint32_t size = header.size(layout.bigEndian);
            position += 8;
            if (header.name() == layout.soundChunk) {
                if (size == kOpenLength || position + size <= fileSize) return 0;
                return position + size - fileSize;
            }
            position += size + size % 2;
        }
    }
    return 0;
}

} // namespace App
