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

/// A mono or stereo sound file, read from the start to the end in pieces.
/// Unit    32-bit floats, full scale 1
/// Errors  Failure for everything that cannot be rendered: no file, no sound, too many channels, cut short
class AudioReader {
public:
    explicit AudioReader(const std::filesystem::path &path);

    const SF_INFO &info() const { return soundInfo; }
    uint64_t frames() const { return static_cast<uint64_t>(soundInfo.frames); }
    uint32_t channels() const { return static_cast<uint32_t>(soundInfo.channels); }
    uint32_t rate() const { return static_cast<uint32_t>(soundInfo.samplerate); } // Hz
    /// Title, artist and the like, as libsndfile numbers them; null for one that the file has not.
    const char *tag(int which) const { return sf_get_string(handle.get(), which); }

    /// The next frames in file order, channels side by side, into `interleaved`. Less than `count` only at
    /// the end of the file.
    uint32_t read(float *interleaved, uint32_t count);

private:
    std::filesystem::path path;
    SF_INFO soundInfo{};
    SoundHandle handle;
    uint64_t position = 0; // frames
};

} // namespace App
