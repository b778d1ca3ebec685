#pragma once
#include <filesystem>
#include <string>

#include <sndfile.h>

namespace App {

/// Sample format of the written files.
struct SampleFormat {
    std::string bits;   // "16", "24", "32", "float"; empty for the input's
    bool dither = true; // where bits are lost
};

/// The format for `out`. The file extension selects the container. Unless `bits` names a sample format, it is that of the
/// input if the container supports it, else the nearest without audible loss. Channels and rate are the input's.
/// Errors  Failure if the extension is unknown or the container does not support the sample format, the rate or the length
SF_INFO outputFormat(const std::filesystem::path &out, const SF_INFO &input, const std::string &bits = {});

/// True for formats whose decoded samples differ from those written.
bool isLossy(int format);

/// Bits per sample of an integer format; 0 for formats with float samples, which do not clip.
int integerBits(int format);

/// A description for users: "WAV (Microsoft), Signed 24 bit PCM".
std::string describeFormat(int format);

} // namespace App
