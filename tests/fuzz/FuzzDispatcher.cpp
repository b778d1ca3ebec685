#include "tests/fuzz/Seeds.h"
#include "tests/simulation/AnyCall.h"
#include "tests/simulation/HostActions.h"
#include "tests/simulation/Playing.h"

// Makes random dispatcher calls in random order, mixed with ordinary actions of the host and the user.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    SimulatedHost host(1);
    HostActions actions(host, true);
    EffectInstance &effect = host.effect(0);
    for (const uint32_t seed : seedsOf(data, size)) {
        Random random(seed);
        switch (random.below(8)) {
        case 0: playBlock(effect, random); break;
        case 1: automate(effect, random); break;
        case 2:
        case 3: actions.step(random); break;
        default:
            if (effect.record()) callAnything(effect, random);
            host.system.pump();
        }
    }
    if (effect.record()) effect.requireFiniteParameters();
    return 0;
}
