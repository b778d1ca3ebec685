#pragma once
#include <cstdint>

#include "apps/tessarine/files/AudioReader.h"
#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

/// A sound file being written; it appears under its name when finish returns.
/// Unit    32-bit floats, full scale 1; integer formats round them, and clip and count what is beyond
/// Errors  Failure
class AudioWriter {
public:
    /// In the format that the input and the ending of `path` call for, with the input's tags.
    AudioWriter(const std::filesystem::path &path, const AudioReader &input);

    void write(const float *interleaved, uint32_t frames);
    void finish();

    uint64_t clippedSamples() const { return clipped; }
    int format() const { return soundInfo.format; }

private:
    AudioWriter(const std::filesystem::path &path, const SF_INFO &format);
    void fail();
    void quantise(const float *samples, size_t count);

    std::filesystem::path path;
    SF_INFO soundInfo;
    TemporaryFile file;
    SoundHandle handle; // closed before the file under it
    const int bits;     // of an integer format, else 0
    std::vector<int32_t> quantised;
    uint64_t clipped = 0;
};

} // namespace App
