#include "apps/tessarine/files/InputPath.h"

#include <fmt/format.h>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace fs = std::filesystem;

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

} // namespace App
