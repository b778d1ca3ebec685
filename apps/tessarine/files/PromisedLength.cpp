#include "apps/tessarine/files/PromisedLength.h"

#include <array>
#include <fstream>
#include <string_view>

namespace App {

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

uint64_t missingSoundBytes(const std::filesystem::path &path)
{
    std::error_code ignored;
    const uint64_t fileSize = std::filesystem::file_size(path, ignored);
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
