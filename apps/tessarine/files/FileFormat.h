#pragma once
#include <filesystem>
#include <string>

#include <sndfile.h>

namespace App {

/// The format to write `out` in: the container that its ending names, with the samples of the input as they
/// are where that container can hold them, else the nearest that loses nothing audible. Channels and rate are
/// the input's.
/// Errors  Failure for an ending that names no format, and for a length that the container cannot hold
SF_INFO outputFormat(const std::filesystem::path &out, const SF_INFO &input);

/// Bits of the whole numbers that the format stores; 0 if it stores floats, which know no full scale.
int integerBits(int format);

/// Such as "WAV (Microsoft), Signed 24 bit PCM".
std::string describeFormat(int format);

} // namespace App
