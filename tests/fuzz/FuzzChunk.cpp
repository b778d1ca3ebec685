#include "tests/fuzz/Seeds.h"
#include "tests/simulation/ChunkDamage.h"
#include "tests/simulation/Playing.h"

// Loads damaged chunks. A refused chunk must not change the effect; an accepted one must leave a valid state.

namespace {

/// One running effect for all inputs, with no parameter at its default. Each input starts from the same chunk, because
/// its result must not depend on earlier inputs.
struct Subject {
    Subject()
    {
        Random random(1);
        for (int32_t i = 0; i < effect.record()->numParams; ++i)
            effect.record()->setParameter(effect.record(), i, random.real(0.1, 0.9));
        start = effect.chunk();
    }
    EffectInstance effect{0};
    const ChunkDamage damage{effect};
    EffectInstance::Bytes start;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Subject subject;
    const EffectInstance &effect = subject.effect;
    effect.require(effect.setChunk(subject.start, false), "the effect loads its own chunk");
    effect.require(effect.chunk() == subject.start, "loading and saving does not change a chunk");

    EffectInstance::Bytes chunk = subject.start;
    Random random(0);
    for (const uint32_t seed : seedsOf(data, size)) {
        random = Random(seed);
        subject.damage.change(chunk, random);
    }
    if (!effect.checkChunk(chunk, random.chance(0.5)) || !random.chance(1.0 / 32)) return 0;
    effect.requireShortStrings();
    effect.switchTo(false); // clears the chain's audio state
    effect.switchTo(true);
    playBlock(subject.effect, random);
    return 0;
}
