#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "apps/tessarine/files/Chunks.h"
#include "apps/tessarine/files/MetadataLoss.h"

namespace App {

class TemporaryFile;

/// A chunk of a WAV or AIFF file.
struct MetadataChunk {
    std::string name; // four characters
    std::string bytes;

    /// "cue", "LIST adtl"
    std::string shownName() const;
    /// True if it holds positions in the audio, which are wrong for an excerpt.
    bool hasPositions() const;
};

/// Reads the chunks that are neither audio nor derived from it. Chunks after the first `mostBytes` are lost.
std::vector<MetadataChunk> readChunks(FileBytes &file, uint64_t mostBytes, MetadataLoss &loss);

/// Adds chunks to the end of a complete WAV, RF64 or AIFF file.
void appendChunks(TemporaryFile &file, const std::vector<MetadataChunk> &chunks, MetadataLoss &loss);

} // namespace App
