#pragma once
#include <vector>

#include "PluginBase/Util/DataStream.h"
#include "plugin/Plugin.h"

/// The programs of the effect and the chunk in which a host keeps them: for each program the size of its
/// state image, the image and the name. Program indices are the caller's duty.
/// Thread  the host's main thread; audio may run meanwhile
class Programs {
public:
    /// `count` programs of default values; loads the first.
    Programs(Plugin &owner, size_t count);

    String &name(size_t program) { return programs[program].name; }
    void load(size_t program) { plugin.loadValidState(programs[program].state); }
    void copy(size_t from, size_t to) { programs[to] = programs[from]; }

    /// Stores the present values in `current` and points `data` to a chunk of that program or of all, which
    /// stays valid until the next call. Returns its bytes, or 0 if it cannot be written.
    int32_t saveChunk(size_t current, bool onlyCurrent, void **data);
    /// Loads `current` from a chunk of that program or of all. Skips a program that the chunk cuts short or whose
    /// state is not valid; if it skips all, nothing changes. Returns `size`, or 0 where a state would be longer than
    /// any that saveChunk writes.
    int32_t loadChunk(size_t current, bool onlyCurrent, const void *data, int32_t size);
    /// True if the last call of loadChunk loaded a program.
    bool lastChunkLoaded() const { return chunkLoaded; }

private:
    struct ProgramEntry {
        Plugin::StateImage state; // always valid
        String name;
    };
    static bool read(Util::DataStream &stream, ProgramEntry &program);

    Plugin &plugin;
    std::vector<ProgramEntry> programs;
    bool chunkLoaded = false;
    std::vector<uint8_t> chunkBuffer; // the chunk that the host was given last
};
