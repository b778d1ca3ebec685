#include "tests/driver/AnyCall.h"
#include "tests/driver/Playing.h"
#include "tests/driver/Project.h"
#include "tests/fuzz/Seeds.h"

// Makes any calls of the interface in any order, between all that a host and a person do with an effect.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Studio studio(1);
    Project project(studio, true);
    DrivenEffect &effect = studio.effect(0);
    for (const uint32_t seed : seedsOf(data, size)) {
        Random random(seed);
        switch (random.below(8)) {
        case 0: playBlock(effect, random); break;
        case 1: automate(effect, random); break;
        case 2:
        case 3: project.step(random); break;
        default:
            if (effect.record()) callAnything(effect, random);
            studio.system.pump();
        }
    }
    if (effect.record()) effect.requireFiniteParameters();
    return 0;
}
