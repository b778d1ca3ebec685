#include <algorithm>
#include <bit>

#include "tests/fuzz/ChunkInput.h"
#include "tests/fuzz/FuzzedEffect.h"

// Hands chunks to the effect. A refused one may change nothing at all, a taken one must leave the effect sound.

namespace {

constexpr size_t kLongTail = 420000; // bytes; the longest image with the longest name has 400008

bool sameBits(const std::vector<float> &a, const std::vector<float> &b)
{
    return std::ranges::equal(a, b, {}, std::bit_cast<uint32_t, float>, std::bit_cast<uint32_t, float>);
}

void requireRefusal(const LoadedEffect &effect, const Bytes &chunk, int32_t size, bool isPreset)
{
    Bytes copy = chunk;
    require(effect.dispatch(effSetChunk, isPreset, size, copy.data()) == 0, "a negative size is refused");
}

void requireSoundness(FuzzedEffect &effect, bool isPreset, bool listen)
{
    effect.requireFiniteParameters();
    const Bytes taken = effect.chunk();
    require(effect.setChunk(taken, isPreset), "what was taken can be saved and loaded");
    require(effect.chunk() == taken, "what was taken stays the same when saved and loaded");
    if (!listen) return;
    effect.requireTextsThatFit();
    effect.requireFiniteSound();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) return 0;
    FuzzedEffect &effect = FuzzedEffect::instance();
    const uint8_t how = data[0];
    Bytes chunk(data + 1, data + size);
    if (how & withLongTail) chunk.resize(chunk.size() + kLongTail, 'x');

    effect.reset();
    const std::vector<float> parameters = effect.parameters();
    const bool isPreset = how & asPreset;
    if (how & withNegativeSize)
        requireRefusal(effect.loaded(), chunk, -static_cast<int32_t>(size), isPreset);
    else if (effect.setChunk(chunk, isPreset)) {
        requireSoundness(effect, isPreset, how & thenListen);
        return 0;
    }
    require(sameBits(parameters, effect.parameters()), "a refused chunk changes no parameter");
    require(effect.chunk() == effect.startChunk(), "a refused chunk changes nothing that is saved");
    return 0;
}
