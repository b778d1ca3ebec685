#include "apps/tessarine/files/OutputPath.h"

#include <fmt/format.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Text.h"

namespace App {

namespace fs = std::filesystem;

bool isSameFile(const fs::path &a, const fs::path &b)
{
    std::error_code ignored;
    if (fs::equivalent(a, b, ignored)) return true;
    const auto real = [&](const fs::path &path) {
        return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
    };
    return real(a) == real(b);
}

void requireDistinct(const std::vector<NamedFile> &inputs, const std::vector<NamedFile> &outputs)
{
    for (size_t i = 0; i < outputs.size(); ++i) {
        const NamedFile &written = outputs[i];
        if (written.path.empty()) continue;
        std::vector<NamedFile> others = inputs;
        others.insert(others.end(), outputs.begin(), outputs.begin() + static_cast<ptrdiff_t>(i));
        for (const NamedFile &taken : others) {
            if (!taken.path.empty() && isSameFile(written.path, taken.path))
                throw Failure(fmt::format("the {} would overwrite the {} {}; choose another name",
                                          written.role, taken.role, taken.path.string()));
        }
    }
}

std::string checkPictureName(const std::string &path)
{
    if (sameName(fs::path(path).extension().string(), ".png")) return {};
    return fmt::format("'{}' does not end in .png; name a PNG picture", path);
}

} // namespace App
