#pragma once
#include <string>
#include <string_view>

#include "apps/tessarine/files/MetadataLoss.h"
#include "apps/tessarine/files/MetadataTags.h"

namespace TagLib::ID3v2 {
class Tag;
}

namespace TagLib::MPEG {
class File;
}

namespace App {

/// Reads the tags of an MP3 file. Adds the names of frames that are neither text nor picture to `loss`.
MetadataTags readId3(const TagLib::MPEG::File &file, MetadataLoss &loss);
/// The same for an ID3v2 tag in a chunk.
MetadataTags readId3(std::string_view bytes, MetadataLoss &loss);

/// Adds text and pictures to an empty tag.
void fillId3(TagLib::ID3v2::Tag &tag, const MetadataTags &tags);
/// An ID3v2 tag for a chunk.
std::string makeId3(const MetadataTags &tags);

/// Returns the tag without loudness frames; `bytes` itself if it has none.
std::string withoutStaleFrames(const std::string &bytes);

} // namespace App
