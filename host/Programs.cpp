#include "host/Programs.h"

#include <algorithm>

#include "PluginBase/Util/ByteStream.h"

namespace {

constexpr uint32_t kMostStateBytes = 200000; // a larger size means a corrupt chunk
constexpr uint32_t kBytesOfSizes = 2 * sizeof(uint32_t);
constexpr uint32_t kMostChunkBytes =
    kBytesOfSizes + kMostStateBytes + Util::ByteStream::kLongestText; // per program

} // namespace

Programs::Programs(Plugin &owner, size_t count) : plugin(owner)
{
    programs.assign(count, {plugin.captureDefaultState(), "Default"});
    for (uint32_t i = 1; i < count; ++i) programs[i].name = String("Init %1").arg(i + 1);
    load(0);
}

int32_t Programs::saveChunk(size_t current, bool onlyCurrent, void **data)
{
    try {
        programs[current].state = plugin.captureState();
        const size_t first = onlyCurrent ? current : 0, end = onlyCurrent ? current + 1 : programs.size();
        const size_t bytes = programs[current].name.length() + kBytesOfSizes + programs[current].state.size();
        Util::ByteStream stream(static_cast<uint32_t>(bytes * (end - first)));
        for (size_t i = first; i < end; ++i) {
            stream.writeUInt32(static_cast<uint32_t>(programs[i].state.size()));
            stream.writeBytes(programs[i].state);
            stream.writeString(programs[i].name);
        }
        chunkBuffer = stream.bytes();
        *data = chunkBuffer.data();
        return static_cast<int32_t>(chunkBuffer.size());
    } catch (const Util::Exception::DataStreamIO &) {
        chunkBuffer.clear();
        return 0;
    }
}

int32_t Programs::loadChunk(size_t current, bool onlyCurrent, const void *data, int32_t size)
{
    chunkLoaded = false;
    if (size <= 0) return 0;
    try {
        const size_t first = onlyCurrent ? current : 0, end = onlyCurrent ? current + 1 : programs.size();
        const size_t bytes = std::min(static_cast<size_t>(size), (end - first) * kMostChunkBytes);
        Util::ByteStream stream(static_cast<uint32_t>(bytes), data);
        for (size_t i = first; i < end; ++i) {
            ProgramEntry program;
            if (!read(stream, program)) break;
            if (!plugin.isValidState(program.state)) continue;
            programs[i] = std::move(program);
            chunkLoaded = true;
        }
        if (chunkLoaded) load(current);
        return size;
    } catch (const Util::Exception::DataStreamIO &) {
        return 0;
    }
}

/// False if the stream ends within the program; no other program can follow.
bool Programs::read(Util::DataStream &stream, ProgramEntry &program)
{
    if (stream.bytesLeft() < sizeof(uint32_t)) return false;
    const uint32_t stateBytes = stream.getUInt32();
    if (stateBytes > kMostStateBytes) throw Util::Exception::DataStreamIO("state too long");
    if (stream.bytesLeft() < stateBytes) return false;
    program.state.resize(stateBytes);
    stream.readBytes(program.state);

    if (stream.bytesLeft() < sizeof(uint32_t)) return false;
    const uint32_t nameStart = stream.position();
    const int32_t nameBytes = stream.getLong();
    const bool tooLong = nameBytes > static_cast<int32_t>(Util::ByteStream::kLongestText); // name reads empty
    if (nameBytes < 0 || (!tooLong && stream.bytesLeft() < static_cast<uint32_t>(nameBytes))) return false;
    stream.seek(nameStart);
    stream.readString(program.name);
    return true;
}
