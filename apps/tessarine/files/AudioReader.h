#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <sndfile.h>

namespace App {

struct CloseSound {
    void operator()(SNDFILE *file) const { sf_close(file); }
};
using SoundHandle = std::unique_ptr<SNDFILE, CloseSound>;

/// Reads a mono or stereo audio file block by block. Zeroes NaN, infinite and absurdly loud samples, as the effect
/// does.
/// Unit    32-bit floats, full scale 1
/// Errors  Failure if the file cannot be read, is empty or truncated, or has more than two channels
class AudioReader {
public:
    explicit AudioReader(const std::filesystem::path &path);

    const SF_INFO &info() const { return soundInfo; }
    uint64_t frames() const { return static_cast<uint64_t>(soundInfo.frames); }
    uint32_t channels() const { return static_cast<uint32_t>(soundInfo.channels); }
    uint32_t rate() const { return static_cast<uint32_t>(soundInfo.samplerate); } // Hz

    /// Reads the next `count` frames, interleaved. Returns the number of frames read, which is less than
    /// `count` only at the end of the file.
    uint32_t read(float *interleaved, uint32_t count);
    /// Samples zeroed so far.
    uint64_t zeroedSamples() const { return zeroed; }
    /// Continues reading at a frame of the file.
    void seek(uint64_t frame);

private:
    std::filesystem::path path;
    SF_INFO soundInfo{};
    SoundHandle handle;
    uint64_t position = 0; // frames
    uint64_t zeroed = 0;
};

} // namespace App
