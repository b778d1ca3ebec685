#include "PluginBase/Util/ByteStream.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace Util {

static_assert(std::endian::native == std::endian::little, "streams copy scalars in memory order");

static uint32_t swapped(uint32_t value) { return __builtin_bswap32(value); }

ByteStream::ByteStream(uint32_t reserve) { buffer.reserve(reserve); }

ByteStream::ByteStream(uint32_t size, const void *data)
    : buffer(static_cast<const uint8_t *>(data), static_cast<const uint8_t *>(data) + size)
{
}

bool ByteStream::take(void *target, uint32_t count)
{
    if (!holds(count)) return false;
    std::memcpy(target, buffer.data() + place, count);
    place += count;
    return true;
}

DataStream &ByteStream::readBytes(std::vector<uint8_t> &block)
{
    if (!block.empty() && !take(block.data(), static_cast<uint32_t>(block.size())))
        std::vector<uint8_t>().swap(block);
    return *this;
}

DataStream &ByteStream::readString(String &text)
{
    text = String();
    int32_t stored;
    readLong(stored);
    uint32_t length = static_cast<uint32_t>(stored);
    if (byteOrder == otherOrder) length = swapped(length);
    if (length > kLongestText || length == 0 || !holds(length)) return *this;
    text = String(reinterpret_cast<const char *>(buffer.data() + place), length); // stops at the first zero
    place += length;
    return *this;
}

DataStream &ByteStream::write(const void *source, uint32_t count)
{
    const uint64_t farEnd = uint64_t{place} + count;
    if (farEnd > UINT32_MAX) throw std::bad_alloc(); // positions have 32 bits
    const auto end = static_cast<size_t>(farEnd);
    if (end > buffer.size()) {
        if (end > buffer.capacity()) buffer.reserve(std::max(end, buffer.capacity() + buffer.capacity() / 2));
        buffer.resize(end);
    }
    std::memcpy(buffer.data() + place, source, count);
    place += count;
    return *this;
}

DataStream &ByteStream::writeBytes(const std::vector<uint8_t> &block)
{
    return block.empty() ? *this : write(block.data(), static_cast<uint32_t>(block.size()));
}

DataStream &ByteStream::writeString(const String &text)
{
    const uint32_t length = text.length();
    writeLong(static_cast<int32_t>(byteOrder == otherOrder ? swapped(length) : length));
    return length ? write(text.c_str(), length) : *this;
}

} // namespace Util
