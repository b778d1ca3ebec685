#pragma once
#include <filesystem>

namespace App {

/// Before a file is opened for reading. `content` names what should be in it: "sound".
/// Errors  Failure unless it is a plain file; a link is followed
void requirePlainFile(const std::filesystem::path &path, const char *content);

} // namespace App
