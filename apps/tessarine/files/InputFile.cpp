#include "apps/tessarine/files/InputFile.h"

#include <array>
#include <fmt/format.h>
#include <fstream>
#include <string_view>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace fs = std::filesystem;

namespace {

/// Chunks of RIFF are in little-endian order, those of FORM in big-endian order; else the files are alike.
struct Layout {
    std::string_view container, soundChunk;
    bool bigEndian;
};
constexpr Layout kLayouts[] = {{"RIFF", "data", false}, {"FORM", "SSND", true}};

constexpr uint32_t kOpenLength = 0xFFFFFFFF;

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
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (!fs::exists(status)) throw Failure(fmt::format("{} does not exist; check the name", path.string()));
    if (fs::is_directory(status))
        throw Failure(fmt::format("{} is a folder; name a {} file in it", path.string(), content));
    if (!fs::is_regular_file(status))
        throw Failure(
            fmt::format("{} is not a plain file; copy the {} into one first", path.string(), content));
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
        uint64_t position = 12; // behind the container's header and its type
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
