#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "apps/tessarine/files/Chunks.h"
#include "apps/tessarine/files/MetadataLoss.h"
#include "apps/tessarine/files/MetadataTags.h"

namespace TagLib::Ogg {
class XiphComment;
}

namespace App {

class TemporaryFile;

/// Reads and replaces text and pictures of the comment of a FLAC, Vorbis or Opus file.
MetadataTags readXiph(TagLib::Ogg::XiphComment &comment);
void fillXiph(TagLib::Ogg::XiphComment &comment, const MetadataTags &tags);

/// A metadata block of a FLAC file.
struct FlacBlock {
    enum Type : int { streamInfo, padding, application, seekTable, comment, cueSheet, picture };

    int type;
    std::string bytes;

    bool isTags() const { return type == comment || type == picture; }
    /// "cue sheet"
    std::string shownName() const;
};

/// Reads all blocks except padding and seek tables. Blocks after the first `mostBytes` are lost.
std::vector<FlacBlock> readFlac(FileBytes &file, uint64_t mostBytes, MetadataLoss &loss);
/// Text and pictures of the blocks.
MetadataTags readFlacTags(const std::vector<FlacBlock> &blocks);
/// Adds tags and other blocks to a complete FLAC file.
void writeFlac(TemporaryFile &file, const MetadataTags &tags, const std::vector<FlacBlock> &others,
               MetadataLoss &loss);

} // namespace App
