#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "apps/tessarine/files/MetadataChunks.h"
#include "apps/tessarine/files/MetadataTags.h"

namespace App {

/// True for a LIST chunk of WAV with text.
bool isInfo(const MetadataChunk &chunk);
/// The content of a LIST INFO chunk with the line in its comment (ICMT); the other entries stay unchanged.
std::string infoWithSettings(std::string bytes, const std::string &line);

/// Text tags in the LIST INFO chunks of WAV, the text chunks of AIFF, and the ID3v2 tags of both.
/// ID3v2 tags of more than `mostBytes` are lost.
MetadataTags readTextChunks(const std::vector<MetadataChunk> &chunks, uint64_t mostBytes, MetadataLoss &loss);
/// Chunks for tags from another format. An ID3v2 tag is added if the text chunks do not hold all.
std::vector<MetadataChunk> makeWavChunks(const MetadataTags &tags);
std::vector<MetadataChunk> makeAiffChunks(const MetadataTags &tags);

/// True for chunks that readTextChunks reads.
bool isText(const MetadataChunk &chunk);
bool isId3(const MetadataChunk &chunk);

} // namespace App
