#include "apps/tessarine/files/MetadataId3.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/textidentificationframe.h>

namespace App {

namespace {

using TagLib::ID3v2::AttachedPictureFrame;

bool isStale(const TagLib::ID3v2::Frame &frame)
{
    const TagLib::ByteVector id = frame.frameID();
    if (id == "RVA2" || id == "RVAD" || id == "RGAD") return true;
    if (const auto *text = dynamic_cast<const TagLib::ID3v2::UserTextIdentificationFrame *>(&frame))
        return isStaleTag(text->description());
    if (const auto *comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame *>(&frame))
        return isStaleTag(comment->description());
    return false;
}

/// An ID3v2 tag in memory.
struct Id3InMemory {
    explicit Id3InMemory(std::string_view bytes) : stream(toByteVector(bytes)) {}

    TagLib::ByteVectorStream stream;
    TagLib::MPEG::File file{&stream, TagLib::ID3v2::FrameFactory::instance(), false};
};

/// True for frames that are stale or converted otherwise.
bool isHandled(std::string_view id) { return id == "APIC" || id == "RVA2" || id == "RVAD" || id == "RGAD"; }

/// The content of a FLAC picture block.
std::string toPicture(const AttachedPictureFrame &frame)
{
    TagLib::FLAC::Picture picture;
    picture.setType(static_cast<TagLib::FLAC::Picture::Type>(frame.type()));
    picture.setMimeType(frame.mimeType());
    picture.setDescription(frame.description());
    picture.setData(frame.picture());
    return toBytes(picture.render());
}

} // namespace

MetadataTags readId3(const TagLib::MPEG::File &file, MetadataLoss &loss)
{
    MetadataTags tags;
    tags.text = file.properties();
    for (const TagLib::String &frame : tags.text.unsupportedData()) {
        const std::string name = frame.to8Bit(true).substr(0, 4);
        if (!isHandled(name)) loss.add(MetadataLoss::Reason::noPlace, name);
    }
    if (!file.hasID3v2Tag()) return tags;
    for (const TagLib::ID3v2::Frame *frame :
         const_cast<TagLib::MPEG::File &>(file).ID3v2Tag()->frameList("APIC"))
        if (const auto *picture = dynamic_cast<const AttachedPictureFrame *>(frame))
            tags.pictures.push_back(toPicture(*picture));
    return tags;
}

MetadataTags readId3(std::string_view bytes, MetadataLoss &loss)
{
    Id3InMemory in(bytes);
    return readId3(in.file, loss);
}

void fillId3(TagLib::ID3v2::Tag &tag, const MetadataTags &tags)
{
    tag.setProperties(tags.text);
    for (const std::string &block : tags.pictures) {
        const TagLib::FLAC::Picture picture(toByteVector(block));
        auto *const frame = new AttachedPictureFrame; // the tag deletes it
        frame->setTextEncoding(TagLib::String::UTF8);
        frame->setMimeType(picture.mimeType());
        frame->setType(static_cast<AttachedPictureFrame::Type>(picture.type()));
        frame->setDescription(picture.description());
        frame->setPicture(picture.data());
        tag.addFrame(frame);
    }
}

std::string makeId3(const MetadataTags &tags)
{
    TagLib::ID3v2::Tag tag;
    fillId3(tag, tags);
    return toBytes(tag.render());
}

std::string withoutStaleFrames(const std::string &bytes)
{
    Id3InMemory in(bytes);
    TagLib::ID3v2::Tag *const tag = in.file.ID3v2Tag();
    if (!tag) return bytes;
    std::vector<TagLib::ID3v2::Frame *> stale;
    for (TagLib::ID3v2::Frame *frame : tag->frameList()) {
        if (isStale(*frame)) stale.push_back(frame);
    }
    if (stale.empty()) return bytes;
    for (TagLib::ID3v2::Frame *frame : stale) tag->removeFrame(frame);
    const bool isOld = tag->header()->majorVersion() < 4;
    return toBytes(tag->render(isOld ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4));
}

} // namespace App
