#include "apps/tessarine/files/MetadataXiph.h"

#include <algorithm>
#include <taglib/flacpicture.h>
#include <taglib/xiphcomment.h>

#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

namespace {

using TagLib::Ogg::XiphComment;

constexpr uint64_t kLargestBlock = (1u << 24) - 1; // bytes
constexpr uint64_t kId3Header = 10;                // bytes

/// Position of the first block; some programs write an ID3v2 tag before the FLAC stream.
uint64_t firstBlock(FileBytes &file)
{
    uint64_t position = 0;
    const std::string header = file.read(0, kId3Header);
    if (header.starts_with("ID3")) {
        uint64_t length = 0;
        for (const char digit : header.substr(6))
            length = length << 7 | (static_cast<unsigned char>(digit) & 0x7F);
        position = kId3Header + length + (header[5] & 0x10 ? kId3Header : 0);
    }
    return file.read(position, 4) == "fLaC" ? position + 4 : file.size();
}

std::string readBlock(TemporaryFile &file, int64_t position, size_t count)
{
    std::string bytes(count, '\0');
    file.seek(position, SEEK_SET);
    bytes.resize(
        static_cast<size_t>(std::max<int64_t>(file.get(bytes.data(), static_cast<int64_t>(count)), 0)));
    return bytes;
}

/// Reads the blocks that libsndfile wrote and returns the position of the audio.
int64_t readWrittenBlocks(TemporaryFile &file, std::vector<FlacBlock> &blocks)
{
    int64_t position = 4;
    for (bool last = false; !last;) {
        const std::string header = readBlock(file, position, 4);
        if (header.size() < 4) break;
        last = header[0] & 0x80;
        const auto length = static_cast<size_t>(toNumber(header.substr(1), true));
        blocks.push_back({header[0] & 0x7F, readBlock(file, position + 4, length)});
        position += 4 + static_cast<int64_t>(length);
    }
    return position;
}

} // namespace

std::string FlacBlock::shownName() const
{
    switch (type) {
    case application: return "application block";
    case comment: return "text tags";
    case cueSheet: return "cue sheet";
    case picture: return "pictures";
    default: return "FLAC block " + std::to_string(type);
    }
}

MetadataTags readXiph(XiphComment &comment)
{
    MetadataTags tags;
    tags.text = comment.properties();
    for (const TagLib::FLAC::Picture *picture : comment.pictureList())
        tags.pictures.push_back(toBytes(picture->render()));
    return tags;
}

void fillXiph(XiphComment &comment, const MetadataTags &tags)
{
    TagLib::PropertyMap text = tags.text;
    for (const auto &[name, values] : comment.properties()) text.replace(name, values); // of the encoder
    comment.setProperties(text);
    for (const std::string &block : tags.pictures)
        comment.addPicture(new TagLib::FLAC::Picture(toByteVector(block))); // the comment deletes it
}

std::vector<FlacBlock> readFlac(FileBytes &file, uint64_t mostBytes, MetadataLoss &loss)
{
    std::vector<FlacBlock> blocks;
    uint64_t position = firstBlock(file), total = 0;
    for (bool last = false; !last;) {
        const std::string header = file.read(position, 4);
        if (header.size() < 4) break;
        last = header[0] & 0x80;
        const int type = header[0] & 0x7F;
        const uint64_t length = toNumber(header.substr(1), true), begin = position + 4;
        position = begin + length;
        if (type == FlacBlock::streamInfo || type == FlacBlock::padding || type == FlacBlock::seekTable)
            continue;
        total += length + 4;
        if (position > file.size()) {
            loss.add(MetadataLoss::Reason::damaged, FlacBlock{type, {}}.shownName());
            break;
        }
        if (total > mostBytes) {
            loss.add(MetadataLoss::Reason::tooLarge, FlacBlock{type, {}}.shownName());
            continue;
        }
        if (type > FlacBlock::picture)
            loss.add(MetadataLoss::Reason::noPlace, FlacBlock{type, {}}.shownName());
        else
            blocks.push_back({type, file.read(begin, length)});
    }
    return blocks;
}

MetadataTags readFlacTags(const std::vector<FlacBlock> &blocks)
{
    MetadataTags tags;
    for (const FlacBlock &block : blocks) {
        if (block.type == FlacBlock::picture) tags.pictures.push_back(block.bytes);
        if (block.type != FlacBlock::comment) continue;
        XiphComment comment(toByteVector(block.bytes));
        MetadataTags found = readXiph(comment);
        tags.text.merge(found.text);
        tags.pictures.insert(tags.pictures.end(), found.pictures.begin(), found.pictures.end());
    }
    return tags;
}

void writeFlac(TemporaryFile &file, const MetadataTags &tags, const std::vector<FlacBlock> &others,
               MetadataLoss &loss)
{
    std::vector<FlacBlock> blocks;
    const int64_t audio = readWrittenBlocks(file, blocks);
    TagLib::ByteVector written;
    std::erase_if(blocks, [&](const FlacBlock &block) {
        if (block.type == FlacBlock::comment) written = toByteVector(block.bytes);
        return block.type == FlacBlock::comment || block.type == FlacBlock::padding;
    });
    XiphComment comment(written); // with the encoder's name
    fillXiph(comment, {tags.text, {}});
    blocks.push_back({FlacBlock::comment, toBytes(comment.render(false))});
    for (const std::string &picture : tags.pictures) blocks.push_back({FlacBlock::picture, picture});
    blocks.insert(blocks.end(), others.begin(), others.end());
    std::erase_if(blocks, [&](const FlacBlock &block) {
        if (block.bytes.size() <= kLargestBlock) return false;
        loss.add(MetadataLoss::Reason::tooLarge, block.shownName());
        return true;
    });

    std::string header;
    for (const FlacBlock &block : blocks) {
        header += static_cast<char>(block.type | (&block == &blocks.back() ? 0x80 : 0));
        header += fromNumber(block.bytes.size(), 3, true) + block.bytes;
    }
    file.replace(4, audio - 4, header);
}

} // namespace App
