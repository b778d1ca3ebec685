#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "plugin/Plugin.h"

/// Where the fields of a chunk stand, by their offsets in bytes.
struct ChunkLayout {
    explicit ChunkLayout(const Plugin &plugin);

    static constexpr size_t kHeader =
        4 * sizeof(uint32_t);            // bytes of the image, magic, version, bytes of the image
    std::vector<size_t> sizes;           // 4 bytes, with the rest of the header
    std::vector<size_t> reals, integers; // 4 bytes
    std::vector<size_t> flags;           // 1 byte
    size_t name;                         // length of the name, which ends the chunk
};
