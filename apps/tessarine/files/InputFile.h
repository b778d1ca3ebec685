#pragma once
#include <cstdint>
#include <filesystem>

namespace App {

/// Checks a path before the file is opened for reading. Follows links. `content` is for the error message:
/// "an audio file".
/// Errors  Failure unless `path` is a regular file
void requirePlainFile(const std::filesystem::path &path, const char *content);

/// Number of audio bytes missing at the end of a truncated WAV, RF64, W64, AIFF, CAF or AU file, according to its header.
/// 0 for all other formats, and if the header leaves the length open, as programs that write to a pipe do.
uint64_t missingAudioBytes(const std::filesystem::path &path);

} // namespace App
