#include "tests/driver/ChunkDamage.h"
#include "tests/driver/Playing.h"
#include "tests/fuzz/Seeds.h"

// Hands damaged chunks to the effect. A refused one may change nothing at all, a taken one must leave the effect sound.

namespace {

/// The one effect for all inputs, switched on and with every parameter away from its default. It begins each with
/// the same chunk: what an input finds must not depend on those before it.
struct Subject {
    Subject()
    {
        Random random(1);
        for (int32_t i = 0; i < effect.record()->numParams; ++i)
            effect.record()->setParameter(effect.record(), i, random.real(0.1, 0.9));
        start = effect.chunk();
    }
    DrivenEffect effect{0};
    const ChunkDamage damage{effect};
    DrivenEffect::Bytes start;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Subject subject;
    const DrivenEffect &effect = subject.effect;
    effect.require(effect.setChunk(subject.start, false), "the effect takes its own chunk");
    effect.require(effect.chunk() == subject.start, "a chunk comes back as it was loaded");

    DrivenEffect::Bytes chunk = subject.start;
    Random random(0);
    for (const uint32_t seed : seedsOf(data, size)) {
        random = Random(seed);
        subject.damage.change(chunk, random);
    }
    if (!effect.offer(chunk, random.chance(0.5)) || !random.chance(1.0 / 32)) return 0;
    effect.requireTextsThatFit();
    effect.switchTo(false); // the sound begins in a chain without a past
    effect.switchTo(true);
    playBlock(subject.effect, random);
    return 0;
}
