#pragma once
#include <cstdint>
#include <vector>

#include "PluginBase/Util/Exception.h"
#include "PluginBase/Util/String.h"

namespace Util {

namespace Exception {
/// Thrown by streams that can fail, such as file streams; memory streams never throw it.
class DataStreamIO : public ::Exception::Base {
public:
    using ::Exception::Base::Base;
};
} // namespace Exception

/// Typed reading and writing with one shared position. Scalars are little-endian. A string is a 32-bit length
/// followed by its bytes; a block is its bytes without a length.
/// Errors  reading past the end returns 0, an empty string or an empty block and keeps the position; it does
///         not throw. Call bytesLeft first to detect it
class DataStream {
public:
    enum ByteOrder : uint32_t { machineOrder = 0, sameOrder = 1, otherOrder = 2 };

    DataStream() = default;
    DataStream(const DataStream &) = delete;
    DataStream &operator=(const DataStream &) = delete;

    virtual DataStream &readBytes(std::vector<uint8_t> &block) = 0; // reads block.size() bytes
    virtual DataStream &readString(String &text) = 0;
    virtual DataStream &readDouble(double &) = 0;
    virtual DataStream &readFloat(float &) = 0;
    virtual DataStream &readInt32(int32_t &) = 0;
    virtual DataStream &readUInt32(uint32_t &) = 0;
    virtual DataStream &readLong(int32_t &) = 0;
    virtual DataStream &readULong(uint32_t &) = 0;
    virtual DataStream &readInt16(int16_t &) = 0;
    virtual DataStream &readUInt16(uint16_t &) = 0;
    virtual DataStream &readInt8(int8_t &) = 0;
    virtual DataStream &readUInt8(uint8_t &) = 0;

    virtual double getDouble() = 0;
    virtual float getFloat() = 0;
    virtual int32_t getInt32() = 0;
    virtual uint32_t getUInt32() = 0;
    virtual int32_t getLong() = 0;
    virtual uint32_t getULong() = 0;
    virtual int16_t getInt16() = 0;
    virtual uint16_t getUInt16() = 0;
    virtual int8_t getInt8() = 0;
    virtual uint8_t getUInt8() = 0;

    virtual DataStream &writeBytes(const std::vector<uint8_t> &block) = 0;
    virtual DataStream &writeString(const String &text) = 0;
    virtual DataStream &writeDouble(double) = 0;
    virtual DataStream &writeFloat(float) = 0;
    virtual DataStream &writeInt32(int32_t) = 0;
    virtual DataStream &writeUInt32(uint32_t) = 0;
    virtual DataStream &writeLong(int32_t) = 0;
    virtual DataStream &writeULong(uint32_t) = 0;
    virtual DataStream &writeInt16(int16_t) = 0;
    virtual DataStream &writeUInt16(uint16_t) = 0;
    virtual DataStream &writeInt8(int8_t) = 0;
    virtual DataStream &writeUInt8(uint8_t) = 0;

    virtual bool atEnd() const = 0;
    virtual uint32_t position() const = 0;
    virtual uint32_t size() const = 0;
    virtual uint32_t bytesLeft() const = 0;
    virtual void seek(uint32_t position) = 0; // unchecked, may be beyond the end
    virtual void skip(uint32_t count) = 0;
    virtual ~DataStream() = default;

protected:
    uint32_t byteOrder = machineOrder; // `otherOrder` swaps only the lengths of strings
};

} // namespace Util
