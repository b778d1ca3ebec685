#include "apps/tessarine/files/MetadataStream.h"

#include <algorithm>

#include "apps/tessarine/files/MetadataTags.h"

namespace App {

namespace {

long target(long offset, TagLib::IOStream::Position from, long current, long length)
{
    const long base = from == TagLib::IOStream::Beginning ? 0
                      : from == TagLib::IOStream::Current ? current
                                                          : length;
    return std::max(base + offset, 0L);
}

} // namespace

TagLib::ByteVector MetadataSource::readBlock(unsigned long count)
{
    const auto at = static_cast<uint64_t>(position);
    const uint64_t wanted = std::min<uint64_t>(count, file.size() - std::min(file.size(), at));
    if (wanted > left) {
        exhausted = true;
        left = 0;
        return {};
    }
    left -= wanted;
    position += static_cast<long>(wanted);
    return toByteVector(file.read(at, wanted));
}

void MetadataSource::seek(long offset, Position from) { position = target(offset, from, position, length()); }

TagLib::ByteVector MetadataTarget::readBlock(unsigned long count)
{
    const int64_t present = std::max<int64_t>(file.length() - position, 0);
    const auto wanted = static_cast<int64_t>(std::min<uint64_t>(count, static_cast<uint64_t>(present)));
    TagLib::ByteVector bytes(static_cast<unsigned>(wanted), '\0');
    file.seek(position, SEEK_SET);
    bytes.resize(static_cast<unsigned>(std::max<int64_t>(file.get(bytes.data(), wanted), 0)));
    position += static_cast<long>(bytes.size());
    return bytes;
}

void MetadataTarget::writeBlock(const TagLib::ByteVector &data)
{
    file.seek(position, SEEK_SET);
    position += file.put(data.data(), data.size());
}

void MetadataTarget::insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replaced)
{
    const auto end = static_cast<uint64_t>(file.length());
    const uint64_t at = std::min<uint64_t>(start, end), removed = std::min<uint64_t>(replaced, end - at);
    file.replace(static_cast<int64_t>(at), static_cast<int64_t>(removed), toBytes(data));
    position = static_cast<long>(at + data.size());
}

void MetadataTarget::removeBlock(unsigned long start, unsigned long length) { insert({}, start, length); }

void MetadataTarget::seek(long offset, Position from) { position = target(offset, from, position, length()); }

void MetadataTarget::truncate(long length)
{
    if (length < file.length()) file.replace(length, file.length() - length, {});
}

} // namespace App
