#include "apps/tessarine/files/InputFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <string>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/Chunks.h"

namespace App {

namespace fs = std::filesystem;

namespace {

/// Position and announced length of the audio in a file, in bytes.
struct AudioBytes {
    uint64_t begin, length;
};

std::optional<AudioBytes> findAudio(FileBytes &file)
{
    ChunkWalker chunks(file);
    while (const std::optional<ChunkWalker::Chunk> chunk = chunks.next()) {
        if (chunk->isAudio) return AudioBytes{chunk->begin, chunk->length};
    }
    const std::string start = file.read(0, 4);
    if (start == ".snd" || start == "dns.") { // AU, in either byte order
        const bool bigEndian = start == ".snd";
        return AudioBytes{file.number(4, 4, bigEndian), file.number(8, 4, bigEndian)};
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
    FileBytes file(path);
    const std::optional<AudioBytes> audio = findAudio(file);
    if (!audio || audio->length == kOpenLength32 || audio->length == kOpenLength64) return 0;
    const uint64_t present = file.size() - std::min(file.size(), audio->begin);
    return audio->length - std::min(audio->length, present);
}

} // namespace App
