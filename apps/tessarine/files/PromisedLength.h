#pragma once
#include <cstdint>
#include <filesystem>

namespace App {

/// Bytes of sound that the header of a WAV or AIFF file announces and the file does not have: above 0 the
/// file was cut short on its way. 0 for every other format, and for headers that leave the length open, as
/// programs do that write to a pipe.
uint64_t missingSoundBytes(const std::filesystem::path &path);

} // namespace App
