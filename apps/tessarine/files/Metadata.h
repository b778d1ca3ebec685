#pragma once
#include <filesystem>
#include <vector>

#include <sndfile.h>

#include "apps/tessarine/files/MetadataChanges.h"
#include "apps/tessarine/files/MetadataChunks.h"
#include "apps/tessarine/files/MetadataTags.h"
#include "apps/tessarine/files/MetadataXiph.h"

namespace App {

/// The metadata of an audio file: time, chunks of WAV and AIFF, text tags and pictures of all formats but W64 and AU.
/// Damaged metadata and more than 64 MiB of it are lost, which is not an error.
class Metadata {
public:
    /// `format` is libsndfile's.
    Metadata(const std::filesystem::path &path, int format);

    /// Adds the metadata to a complete file of libsndfile's format `out`, and reports the rest as lost.
    void addTo(TemporaryFile &file, int out, const MetadataChanges &changes, MetadataLoss &loss) const;

private:
    void read(const std::filesystem::path &path);
    MetadataTags commonTags(int out, const MetadataChanges &changes, MetadataLoss &loss) const;
    std::vector<MetadataChunk> changedChunks(int out, const MetadataChanges &changes,
                                             MetadataLoss &loss) const;
    void addTags(TemporaryFile &file, int out, const MetadataChanges &changes, MetadataLoss &loss) const;

    int format;
    std::filesystem::file_time_type modified;
    std::vector<MetadataChunk> chunks; // of WAV and AIFF
    std::vector<FlacBlock> blocks;     // of FLAC
    MetadataTags tags;                 // of the other formats
    MetadataLoss lossOnReading;
};

} // namespace App
