#include "apps/tessarine/effect/ChunkFile.h"

#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <fstream>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/InputPath.h"

namespace App {

namespace fs = std::filesystem;

namespace {

constexpr size_t kMostBytes = size_t{1} << 20; // a chunk has a few hundred

std::string readFile(const fs::path &path)
{
    requirePlainFile(path, "chunk");
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string bytes(kMostBytes + 1, '\0');
    if (file) file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file && !file.eof())
        throw Failure(fmt::format("{} cannot be read: {}; check the file and its rights", path.string(),
                                  std::strerror(errno != 0 ? errno : EIO)));
    bytes.resize(static_cast<size_t>(file.gcount()));
    if (bytes.size() > kMostBytes)
        throw Failure(fmt::format("{} is larger than 1 MiB and so no chunk of this effect; name a file that "
                                  "'tessarine chunk' wrote",
                                  path.string()));
    return bytes;
}

} // namespace

void loadChunk(EffectHost &host, const fs::path &path)
{
    if (!host.setChunk(readFile(path)))
        throw Failure(fmt::format("{} is damaged or no chunk of this effect; name a file that 'tessarine "
                                  "chunk' wrote",
                                  path.string()));
}

} // namespace App
