#include <algorithm>

#include "PluginBase/Util/ByteStream.h"
#include "host/HostText.h"
#include "host/VSTPlugin.h"

// The programs of the effect and the chunk in which a host keeps them: for each program the size of its state
// image, the image and the name.

namespace {

constexpr uint32_t kMostStateBytes = 200000; // a larger size is damage
constexpr uint32_t kMostProgramName = 23;    // characters that a host is shown
constexpr uint32_t kBytesOfSizes = 2 * sizeof(uint32_t);
constexpr uint32_t kMostChunkBytes =
    kBytesOfSizes + kMostStateBytes + Util::ByteStream::kLongestText; // per program

} // namespace

void VSTPlugin::makePrograms()
{
    programs.assign(static_cast<size_t>(numPrograms), {captureDefaultState(), "Default"});
    for (uint32_t i = 1; i < programs.size(); ++i) programs[i].name = String("Init %1").arg(i + 1);
    curProgram = 0;
    loadState(programs[0].state);
}

int32_t VSTPlugin::getChunk(void **data, bool isPreset)
{
    if (!data) return 0;
    try {
        const size_t first = isPreset ? static_cast<size_t>(curProgram) : 0;
        const size_t count = isPreset ? 1 : programs.size();
        ProgramEntry &current = programs[static_cast<size_t>(curProgram)];
        current.state = captureState();

        Util::ByteStream stream((current.name.length() + kBytesOfSizes + stateSize) *
                                static_cast<uint32_t>(count));
        for (size_t i = first; i < first + count; ++i) {
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

int32_t VSTPlugin::setChunk(void *data, int32_t size, bool isPreset)
{
    if (!data || size <= 0) return 0;
    try {
        const size_t first = isPreset ? static_cast<size_t>(curProgram) : 0;
        const size_t count = isPreset ? 1 : programs.size();
        const size_t bytes = std::min(static_cast<size_t>(size), count * kMostChunkBytes);
        Util::ByteStream stream(static_cast<uint32_t>(bytes), data);
        bool taken = false;
        for (size_t i = first; i < first + count; ++i) {
            ProgramEntry program;
            if (!readProgram(stream, program)) break;
            if (!isValidState(program.state)) continue;
            programs[i] = std::move(program);
            taken = true;
        }
        return taken && loadState(programs[static_cast<size_t>(curProgram)].state) ? size : 0;
    } catch (const Util::Exception::DataStreamIO &) {
        return 0;
    }
}

/// False if the stream does not hold a whole program; what follows is then no program either.
bool VSTPlugin::readProgram(Util::DataStream &stream, ProgramEntry &program) const
{
    if (stream.bytesLeft() < sizeof(uint32_t)) return false;
    const uint32_t stateBytes = stream.getUInt32();
    if (stateBytes > kMostStateBytes || stream.bytesLeft() < stateBytes) return false;
    program.state.resize(stateBytes);
    stream.readBytes(program.state);

    if (stream.bytesLeft() < sizeof(uint32_t)) return false;
    const uint32_t nameStart = stream.position();
    const int32_t nameBytes = stream.getLong();
    const bool tooLong = nameBytes > static_cast<int32_t>(Util::ByteStream::kLongestText); // reads as no name
    if (nameBytes < 0 || (!tooLong && stream.bytesLeft() < static_cast<uint32_t>(nameBytes))) return false;
    stream.seek(nameStart);
    stream.readString(program.name);
    return true;
}

void VSTPlugin::setProgram(int32_t program)
{
    if (program < 0 || program >= numPrograms) return;
    curProgram = program;
    loadState(programs[static_cast<size_t>(program)].state);
}

void VSTPlugin::setProgramName(char *name)
{
    if (name) programs[static_cast<size_t>(curProgram)].name = String(name);
}

void VSTPlugin::getProgramName(char *name)
{
    if (name) writeText(programs[static_cast<size_t>(curProgram)].name, kMostProgramName, name);
}

bool VSTPlugin::getProgramNameIndexed(int32_t, int32_t index, char *name)
{
    if (index < 0 || index >= numPrograms || !name) return false;
    const String &whole = programs[static_cast<size_t>(index)].name;
    writeText(whole, whole.length(), name);
    return true;
}

bool VSTPlugin::copyProgram(int32_t destination)
{
    if (destination < 0 || destination >= numPrograms) return false;
    if (destination != curProgram)
        programs[static_cast<size_t>(destination)] = programs[static_cast<size_t>(curProgram)];
    return true;
}
