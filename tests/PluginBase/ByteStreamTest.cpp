#include "PluginBase/Util/ByteStream.h"

#include <gtest/gtest.h>
#include <new>

namespace {

TEST(ByteStream, ZeroFillsGapsAndReadsNothingPastTheEnd)
{
    Util::ByteStream stream(0);
    stream.seek(2);
    stream.writeInt16(0x0201);
    EXPECT_EQ(stream.bytes(), (std::vector<uint8_t>{0, 0, 1, 2}));
    stream.seek(1);
    std::vector<uint8_t> block(4, 9);
    EXPECT_EQ(stream.getUInt32(), 0u);
    EXPECT_TRUE(stream.readBytes(block).position() == 1 && block.empty());
    EXPECT_EQ(stream.getInt16(), 0x0100);
    stream.seek(0xFFFFFFFF); // the highest position
    EXPECT_THROW(stream.writeInt8(1), std::bad_alloc);
}

TEST(ByteStream, RefusesLongAndTruncatedStringsAndStopsAtNull)
{
    String text;
    for (const auto &[length, read] : {std::pair(200000u, 200000u), {200001u, 0u}})
        for (const auto order : {Util::DataStream::sameOrder, Util::DataStream::otherOrder}) {
            Util::ByteStream stream(0);
            stream.setByteOrder(order);
            stream.writeString(std::string(length, 'x').c_str());
            EXPECT_EQ(stream.bytes()[order == Util::DataStream::otherOrder ? 3 : 0], length & 0xFF);
            stream.seek(0);
            EXPECT_TRUE(stream.readString(text).position() == 4 + read && text.length() == read);
        }
    Util::ByteStream stream(7, "\3\0\0\0a\0b");
    EXPECT_TRUE(stream.readString(text).atEnd() && text == "a");
    Util::ByteStream truncated(6, "\3\0\0\0ab");
    EXPECT_TRUE(truncated.readString(text).position() == 4 && text.isEmpty());
}

} // namespace
