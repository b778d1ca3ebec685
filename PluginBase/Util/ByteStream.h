#pragma once
#include "PluginBase/Util/DataStream.h"

namespace Util {

/// A stream over a growable buffer in memory. Writing beyond the end fills the gap with zeros.
/// Errors  as DataStream; a string longer than kLongestText counts as corrupt and reads as empty
class ByteStream final : public DataStream {
public:
    explicit ByteStream(uint32_t reserve);
    ByteStream(uint32_t size, const void *data); // copies the bytes

    const std::vector<uint8_t> &bytes() const { return buffer; }
    void setByteOrder(uint32_t order) { byteOrder = order; }

    static constexpr uint32_t kLongestText = 200000; // bytes

    DataStream &readBytes(std::vector<uint8_t> &block) override;
    DataStream &readString(String &text) override;
    DataStream &readDouble(double &v) override { return read(v); }
    DataStream &readFloat(float &v) override { return read(v); }
    DataStream &readInt32(int32_t &v) override { return read(v); }
    DataStream &readUInt32(uint32_t &v) override { return read(v); }
    DataStream &readLong(int32_t &v) override { return read(v); }
    DataStream &readULong(uint32_t &v) override { return read(v); }
    DataStream &readInt16(int16_t &v) override { return read(v); }
    DataStream &readUInt16(uint16_t &v) override { return read(v); }
    DataStream &readInt8(int8_t &v) override { return read(v); }
    DataStream &readUInt8(uint8_t &v) override { return read(v); }

    double getDouble() override { return get(&DataStream::readDouble); }
    float getFloat() override { return get(&DataStream::readFloat); }
    int32_t getInt32() override { return get(&DataStream::readInt32); }
    uint32_t getUInt32() override { return get(&DataStream::readUInt32); }
    int32_t getLong() override { return get(&DataStream::readLong); }
    uint32_t getULong() override { return get(&DataStream::readULong); }
    int16_t getInt16() override { return get(&DataStream::readInt16); }
    uint16_t getUInt16() override { return get(&DataStream::readUInt16); }
    int8_t getInt8() override { return get(&DataStream::readInt8); }
    uint8_t getUInt8() override { return get(&DataStream::readUInt8); }

    DataStream &writeBytes(const std::vector<uint8_t> &block) override;
    DataStream &writeString(const String &text) override;
    DataStream &writeDouble(double v) override { return write(&v, sizeof v); }
    DataStream &writeFloat(float v) override { return write(&v, sizeof v); }
    DataStream &writeInt32(int32_t v) override { return write(&v, sizeof v); }
    DataStream &writeUInt32(uint32_t v) override { return write(&v, sizeof v); }
    DataStream &writeLong(int32_t v) override { return write(&v, sizeof v); }
    DataStream &writeULong(uint32_t v) override { return write(&v, sizeof v); }
    DataStream &writeInt16(int16_t v) override { return write(&v, sizeof v); }
    DataStream &writeUInt16(uint16_t v) override { return write(&v, sizeof v); }
    DataStream &writeInt8(int8_t v) override { return write(&v, sizeof v); }
    DataStream &writeUInt8(uint8_t v) override { return write(&v, sizeof v); }

    bool atEnd() const override { return place >= size(); }
    uint32_t position() const override { return place; }
    uint32_t size() const override { return static_cast<uint32_t>(buffer.size()); }
    uint32_t bytesLeft() const override { return size() - place; }
    void seek(uint32_t position) override { place = position; }
    void skip(uint32_t count) override { seek(position() + count); }

private:
    /// True if at least `count` bytes follow the position.
    bool holds(uint32_t count) const { return count <= size() && place <= size() - count; }
    /// Copies `count` bytes and advances the position. If fewer follow, returns false and changes nothing.
    bool take(void *target, uint32_t count);
    DataStream &write(const void *source, uint32_t count);

    template <class T>
    DataStream &read(T &target)
    {
        if (!take(&target, sizeof target)) target = T{};
        return *this;
    }
    template <class T>
    T get(DataStream &(DataStream::*readValue)(T &))
    {
        T value;
        (this->*readValue)(value);
        return value;
    }

    std::vector<uint8_t> buffer;
    uint32_t place = 0;
};

} // namespace Util
