#pragma once
#include <cstdint>

#include "apps/tessarine/files/AudioReader.h"
#include "apps/tessarine/files/Dither.h"
#include "apps/tessarine/files/FileFormat.h"
#include "apps/tessarine/files/Metadata.h"
#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

/// Writes an audio file, which replaces any file at `path` when commit returns.
/// Unit    32-bit floats, full scale 1; for integer formats, samples are dithered, rounded and clipped
/// Errors  Failure if the file cannot be written
class AudioWriter {
public:
    /// Chooses the format with outputFormat.
    AudioWriter(const std::filesystem::path &path, const AudioReader &input, const SampleFormat &samples);

    /// Replaces the samples by those that the file contains, except in lossy formats.
    void write(float *interleaved, uint32_t frames);
    /// Completes the file with the metadata, but does not replace any yet. Returns the part of the metadata that the format
    /// does not support.
    MetadataLoss finish(const Metadata &metadata, const MetadataChanges &changes);
    /// Of the finished file, until it is committed.
    const std::filesystem::path &temporaryPath() const { return file.temporaryPath(); }
    void commit() { file.commit(); }

    /// Number of samples beyond full scale; 0 for float formats.
    uint64_t clippedSamples() const { return clipped; }
    int format() const { return soundInfo.format; }

private:
    AudioWriter(const std::filesystem::path &path, const SF_INFO &format, bool dither);
    void fail();
    void quantise(float *samples, size_t count);

    std::filesystem::path path;
    SF_INFO soundInfo;
    TemporaryFile file;
    SoundHandle handle; // must be destroyed before `file`
    const int bits;     // bits per sample of an integer format, else 0
    Dither dither;
    std::vector<int32_t> quantised;
    uint64_t clipped = 0;
};

} // namespace App
