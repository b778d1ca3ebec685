#include "tests/driver/Journal.h"

#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include <sanitizer/common_interface_defs.h>

#pragma weak __sanitizer_set_death_callback // absent without a sanitizer

namespace Journal {

namespace {

struct Deed {
    const char *what;
    uint32_t instance;
};
std::array<Deed, 16> deeds;
std::atomic<uint64_t> deedCount;
uint64_t runSeed;
uint32_t runInstances; // 0 for a run that has its own way to be replayed

void tellWhatWasDone()
{
    const uint64_t step = steps.count, count = deedCount;
    if (runInstances > 0)
        std::fprintf(stderr,
                     "soak: failed at step %" PRIu64 ". The same choices in one thread:\n"
                     "  tessarine_soak --replay --seed %" PRIu64 " --instances %" PRIu32 " --steps %" PRIu64
                     "\n",
                     step, runSeed, runInstances, step + 1);
    std::fprintf(stderr, "soak: the window thread's last deeds:\n");
    for (uint64_t i = count > deeds.size() ? count - deeds.size() : 0; i < count; ++i) {
        const Deed &deed = deeds[i % deeds.size()];
        std::fprintf(stderr, "  %s, instance %" PRIu32 "\n", deed.what, deed.instance);
    }
}

} // namespace

void begin(uint64_t seed, uint32_t instances)
{
    runSeed = seed;
    runInstances = instances;
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(tellWhatWasDone);
}

void note(const char *what, uint32_t instance)
{
    deeds[deedCount % deeds.size()] = {what, instance};
    ++deedCount;
}

void require(bool holds, const char *what, uint32_t instance)
{
    if (holds) return;
    std::fprintf(stderr, "must hold, and does not: %s (instance %" PRIu32 ")\n", what, instance);
    tellWhatWasDone();
    std::abort();
}

void print()
{
    for (const Tally *tally : {&steps, &blocks, &frames, &valuesSet, &edits, &actsInsideCalls, &chunksTaken,
                               &chunksRefused, &checksAtRest})
        std::printf("  %12" PRIu64 " %s\n", tally->count.load(), tally->what);
}

} // namespace Journal
