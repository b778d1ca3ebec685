#pragma once
#include <vector>

#include "PluginBase/Util/DataStream.h"
#include "plugin/Plugin.h"

/// The effect's programs and the chunk in which hosts store them. For each program the chunk contains the size
/// of its state image, the image and the name. Callers must pass valid program indices.
/// Thread  the host's main thread; audio may run at the same time
class Programs {
public:
    /// Creates `count` programs with default values and loads the first.
    Programs(Plugin &owner, size_t count);

    String &name(size_t program) { return programs[program].name; }
    void load(size_t program) { plugin.loadValidState(programs[program].state); }
    void copy(size_t from, size_t to) { programs[to] = programs[from]; }

    /// Stores the current values in program `current`, then points `data` to a chunk of that program or of all
    /// programs. The chunk stays valid until the next call. Returns its size in bytes, or 0 if writing fails.
    int32_t saveChunk(size_t current, bool onlyCurrent, void **data);
    /// Reads a chunk of program `current` or of all programs, then loads `current`. Skips truncated programs and
    /// invalid states: a state must have the right size, magic number, version and length, and its saved
    /// parameters must be finite. Does not check parameter ranges or bytes after the last program. Changes nothing
    /// if it skips all programs. Returns `size`, or 0 if `size` is not positive or a state exceeds 200000 bytes.
    int32_t loadChunk(size_t current, bool onlyCurrent, const void *data, int32_t size);
    /// True if the last call of loadChunk accepted a program.
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
    std::vector<uint8_t> chunkBuffer; // returned by the last saveChunk
};
