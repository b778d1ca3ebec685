#pragma once
#include <cstdint>
#include <filesystem>

namespace App {

/// Before a file is opened for reading. `content` names what should be in it: "sound".
/// Errors  Failure unless it is a plain file; a link is followed
void requirePlainFile(const std::filesystem::path &path, const char *content);

/// Bytes of sound that the header of a WAV or AIFF file announces and the file does not have: above 0 the
/// file was cut short on its way. 0 for every other format, and for headers that leave the length open, as
/// programs do that write to a pipe.
uint64_t missingSoundBytes(const std::filesystem::path &path);

} // namespace App
