#pragma once
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace App {

/// Lengths in the headers of files whose writers did not know the length in advance.
constexpr uint64_t kOpenLength32 = 0xFFFFFFFF, kOpenLength64 = UINT64_MAX;

/// Reads bytes at any position of a file.
class FileBytes {
public:
    explicit FileBytes(const std::filesystem::path &path);

    uint64_t size() const { return fileSize; }
    /// Empty if the file ends before `position + count`, so a damaged count allocates nothing.
    std::string read(uint64_t position, uint64_t count);
    /// Reads an integer of `bytes` bytes; 0 if the file ends before.
    uint64_t number(uint64_t position, size_t bytes, bool bigEndian);

private:
    std::ifstream file;
    uint64_t fileSize = 0;
};

/// The integer in `digits`, at most 8 bytes.
uint64_t toNumber(std::string_view digits, bool bigEndian);
/// `value` as `bytes` bytes.
std::string fromNumber(uint64_t value, size_t bytes, bool bigEndian);

/// A format whose files consist of chunks: a name, a length and the content.
struct ChunkLayout {
    std::string_view container, audio; // first bytes of the file and of the audio chunk
    uint64_t first;                    // position of the first chunk
    uint64_t nameBytes, sizeBytes;
    bool bigEndian, sizeCountsHeader;
    uint64_t alignment; // of the chunks
};

/// Walks through the chunks of a WAV, RF64, AIFF, W64 or CAF file. Other files have none.
class ChunkWalker {
public:
    explicit ChunkWalker(FileBytes &bytes);

    struct Chunk {
        std::string name; // its first four bytes
        bool isAudio;
        uint64_t begin, length; // of the content in bytes, which may exceed the file or be an open length
    };
    /// Returns the next chunk; nullopt after the last.
    std::optional<Chunk> next();

private:
    FileBytes &file;
    const ChunkLayout *layout = nullptr;
    uint64_t position = 0;
    uint64_t realLength = kOpenLength32; // RF64: of the audio, from the chunk "ds64"
};

} // namespace App
