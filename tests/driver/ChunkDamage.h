#pragma once
#include "tests/driver/Choices.h"
#include "tests/driver/DrivenEffect.h"

/// Damages chunks by their fields: with bytes changed at random nearly all would fail at the header, and nothing
/// behind it would be tried.
class ChunkDamage {
public:
    /// For the chunks of effects like this one.
    explicit ChunkDamage(const DrivenEffect &effect);
    void change(DrivenEffect::Bytes &chunk, Random &random) const;

private:
    void rename(DrivenEffect::Bytes &chunk, Random &random) const;

    static constexpr size_t kHeader = 16;        // bytes: size of the image, magic, version, size again
    static constexpr uint32_t kLongest = 420000; // bytes; twice as many stay below the limit of an allocation
    const DrivenEffect::Bytes sound;
    std::vector<size_t> words = {0, 4, 8, 12}; // offsets of sizes and reals, bytes
    std::vector<size_t> integers, flags;       // offsets, bytes
    size_t name = kHeader;                     // offset of its length; the name ends the chunk
};
