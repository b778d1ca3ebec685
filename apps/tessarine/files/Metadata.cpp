#include "apps/tessarine/files/Metadata.h"

#include <algorithm>
#include <exception>
#include <taglib/id3v2framefactory.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/vorbisfile.h>
#include <taglib/xiphcomment.h>
#include <utility>

#include "apps/tessarine/files/MetadataBext.h"
#include "apps/tessarine/files/MetadataId3.h"
#include "apps/tessarine/files/MetadataStream.h"
#include "apps/tessarine/files/MetadataText.h"

namespace App {

namespace {

namespace fs = std::filesystem;
using Reason = MetadataLoss::Reason;

constexpr uint64_t kMostBytes = uint64_t{64} << 20; // of all chunks or FLAC blocks together
constexpr uint64_t kMostTagBytes = uint64_t{16}
                                   << 20; // tags with very many entries need 50 times as much memory

/// Formats that store metadata alike.
enum class Family { wav, aiff, flac, vorbis, opus, oggFlac, mp3, other };

Family familyOf(int format)
{
    const int samples = format & SF_FORMAT_SUBMASK;
    switch (format & SF_FORMAT_TYPEMASK) {
    case SF_FORMAT_WAV:
    case SF_FORMAT_WAVEX:
    case SF_FORMAT_RF64: return Family::wav;
    case SF_FORMAT_AIFF: return Family::aiff;
    case SF_FORMAT_FLAC: return Family::flac;
    case SF_FORMAT_MPEG: return Family::mp3;
    case SF_FORMAT_OGG:
        return samples == SF_FORMAT_VORBIS ? Family::vorbis
               : samples == SF_FORMAT_OPUS ? Family::opus
                                           : Family::oggFlac;
    default: return Family::other;
    }
}

bool usesXiph(Family family)
{
    return family == Family::flac || family == Family::vorbis || family == Family::opus;
}

template <class File>
MetadataTags readOgg(TagLib::IOStream &stream)
{
    File file(&stream, false);
    return file.isValid() && file.tag() ? readXiph(*file.tag()) : MetadataTags{};
}

template <class File>
void writeOgg(TagLib::IOStream &stream, const MetadataTags &tags)
{
    File file(&stream, false);
    if (!file.isValid() || !file.tag()) return;
    fillXiph(*file.tag(), tags);
    file.save();
}

MetadataTags readMp3(TagLib::IOStream &stream, MetadataLoss &loss)
{
    const TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    return readId3(file, loss);
}

void writeMp3(TagLib::IOStream &stream, const MetadataTags &tags)
{
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    fillId3(*file.ID3v2Tag(true), tags);
    file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripNone, TagLib::ID3v2::v4,
              TagLib::File::DoNotDuplicate);
}

} // namespace

Metadata::Metadata(const fs::path &path, int ofInput) : format(ofInput)
{
    std::error_code ignored;
    modified = fs::last_write_time(path, ignored);
    try {
        read(path);
    } catch (const std::exception &) { // damaged lengths may exhaust memory
        lossOnReading.add(Reason::damaged, "text tags");
    }
}

void Metadata::read(const fs::path &path)
{
    FileBytes file(path);
    MetadataSource stream(file, kMostTagBytes);
    switch (familyOf(format)) {
    case Family::wav:
    case Family::aiff: chunks = readChunks(file, kMostBytes, lossOnReading); break;
    case Family::flac: blocks = readFlac(file, kMostBytes, lossOnReading); break;
    case Family::vorbis: tags = readOgg<TagLib::Ogg::Vorbis::File>(stream); break;
    case Family::opus: tags = readOgg<TagLib::Ogg::Opus::File>(stream); break;
    case Family::oggFlac: tags = readOgg<TagLib::Ogg::FLAC::File>(stream); break;
    case Family::mp3: tags = readMp3(stream, lossOnReading); break;
    case Family::other:
        for (const MetadataChunk &chunk : readChunks(file, kMostBytes, lossOnReading))
            lossOnReading.add(Reason::notRead, chunk.name);
        break;
    }
    if (stream.isExhausted()) lossOnReading.add(Reason::tooLarge, "text tags");
}

void Metadata::addTo(TemporaryFile &file, int out, const MetadataChanges &changes, MetadataLoss &loss) const
{
    loss.add(lossOnReading);
    const Family family = familyOf(out);
    if (family == Family::wav || family == Family::aiff)
        appendChunks(file, changedChunks(out, changes, loss), loss);
    else
        addTags(file, out, changes, loss);
    file.setModified(modified);
}

std::vector<MetadataChunk> Metadata::changedChunks(int out, const MetadataChanges &changes,
                                                   MetadataLoss &loss) const
{
    const bool isWav = familyOf(out) == Family::wav;
    if (familyOf(out) != familyOf(format)) {
        const MetadataTags common = commonTags(out, changes, loss);
        return isWav ? makeWavChunks(common) : makeAiffChunks(common);
    }
    std::vector<MetadataChunk> changed;
    bool needsSettings = !changes.settings.empty();
    for (const MetadataChunk &chunk : chunks) {
        if (changes.isExcerpt && chunk.hasPositions()) {
            loss.add(Reason::excerpt, chunk.shownName());
            continue;
        }
        std::string bytes = chunk.bytes;
        if (isWav && chunk.name == "bext") bytes = changedBext(std::move(bytes), changes);
        if (isWav && chunk.name == "iXML") bytes = changedIxml(std::move(bytes), changes.start);
        if (isId3(chunk) && bytes.size() <= kMostTagBytes) bytes = withoutStaleFrames(bytes);
        if (isInfo(chunk) && needsSettings) {
            bytes = infoWithSettings(std::move(bytes), changes.settings);
            needsSettings = false;
        }
        if (chunk.name == "ANNO" && needsSettings) bytes = withoutSettings(bytes);
        if (!bytes.empty() || chunk.bytes.empty()) changed.push_back({chunk.name, std::move(bytes)});
    }
    if (needsSettings && isWav) changed.push_back({"LIST", infoWithSettings("INFO", changes.settings)});
    if (needsSettings && !isWav) changed.push_back({"ANNO", changes.settings});
    return changed;
}

void Metadata::addTags(TemporaryFile &file, int out, const MetadataChanges &changes, MetadataLoss &loss) const
{
    const MetadataTags common = commonTags(out, changes, loss);
    if (common.isEmpty()) return;
    MetadataTarget stream(file);
    switch (familyOf(out)) {
    case Family::flac: {
        std::vector<FlacBlock> others;
        for (const FlacBlock &block : blocks) {
            if (block.type == FlacBlock::application ||
                (block.type == FlacBlock::cueSheet && !changes.isExcerpt))
                others.push_back(block);
        }
        return writeFlac(file, common, others, loss);
    }
    case Family::vorbis: return writeOgg<TagLib::Ogg::Vorbis::File>(stream, common);
    case Family::opus: return writeOgg<TagLib::Ogg::Opus::File>(stream, common);
    case Family::mp3: return writeMp3(stream, common);
    default: break; // W64, CAF and AU
    }
}

MetadataTags Metadata::commonTags(int out, const MetadataChanges &changes, MetadataLoss &loss) const
{
    MetadataTags common = tags;
    try {
        if (!chunks.empty()) common = readTextChunks(chunks, kMostTagBytes, loss);
        if (!blocks.empty()) common = readFlacTags(blocks);
    } catch (const std::exception &) {
        loss.add(Reason::damaged, "text tags");
    }
    const Family family = familyOf(out);
    common.removeStale();
    if (!usesXiph(family)) common.useDescription();
    if (changes.isExcerpt && common.text.contains("CUESHEET")) loss.add(Reason::excerpt, "cue sheet");
    if (changes.isExcerpt) common.text.erase("LENGTH").erase("CUESHEET");
    for (const MetadataChunk &chunk : chunks) {
        if (!isText(chunk)) loss.add(Reason::noPlace, chunk.shownName());
    }
    for (const FlacBlock &block : blocks) {
        if (block.isTags()) continue;
        if (family != Family::flac) loss.add(Reason::noPlace, block.shownName());
        if (family == Family::flac && block.type == FlacBlock::cueSheet && changes.isExcerpt)
            loss.add(Reason::excerpt, block.shownName());
    }
    if (family != Family::other) {
        if (!changes.settings.empty()) common.setSettings(changes.settings);
        return common;
    }
    if (!common.text.isEmpty()) loss.add(Reason::noPlace, "text tags");
    if (!common.pictures.empty()) loss.add(Reason::noPlace, "pictures");
    return {};
}

} // namespace App
