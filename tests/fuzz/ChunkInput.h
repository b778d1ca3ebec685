#pragma once
#include <cstdint>

/// The first byte of an input says how the rest is handed over; these are its bits.
enum ChunkInput : uint8_t {
    asPreset = 1 << 0,
    withNegativeSize = 1 << 1,
    withLongTail = 1 << 2, // more bytes follow than any chunk may have
    thenListen = 1 << 3,   // run a block and ask for all texts if the chunk is taken
};
