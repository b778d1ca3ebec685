#pragma once
#include "tests/simulation/Choices.h"
#include "tests/simulation/EffectInstance.h"

/// Damages chunks field by field. With random bytes nearly all chunks would be refused for their header, and the code
/// after that check would remain untested.
class ChunkDamage {
public:
    /// Takes the chunk layout from `effect`.
    explicit ChunkDamage(const EffectInstance &effect);
    void change(EffectInstance::Bytes &chunk, Random &random) const;

private:
    void rename(EffectInstance::Bytes &chunk, Random &random) const;

    static constexpr size_t kHeader = 16;        // bytes: image size, magic, version, size again
    static constexpr uint32_t kLongest = 420000; // bytes; twice that is below the fuzzer's limit of 1 MiB
    const EffectInstance::Bytes valid;
    std::vector<size_t> words = {0, 4, 8, 12}; // byte offsets of sizes and reals
    std::vector<size_t> integers, flags;       // byte offsets
    size_t name = kHeader; // byte offset of the program name's length; the name is the last field
};
