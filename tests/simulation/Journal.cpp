#include "tests/simulation/Journal.h"

#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include <sanitizer/common_interface_defs.h>

#pragma weak __sanitizer_set_death_callback // absent without a sanitizer

namespace Journal {

namespace {

struct Action {
    const char *what;
    uint32_t instance;
};
std::array<Action, 16> actions;
std::atomic<uint64_t> actionCount;
uint64_t runSeed;
uint32_t runInstances; // 0 in the fuzzers, which print their own instructions

void printLastActions()
{
    const uint64_t step = steps.count, count = actionCount;
    if (runInstances > 0)
        std::fprintf(stderr,
                     "soak: failed at step %" PRIu64 ". To replay it in one thread:\n"
                     "  tessarine_soak --replay --seed %" PRIu64 " --instances %" PRIu32 " --steps %" PRIu64
                     "\n",
                     step, runSeed, runInstances, step + 1);
    std::fprintf(stderr, "soak: the window thread's last actions:\n");
    for (uint64_t i = count > actions.size() ? count - actions.size() : 0; i < count; ++i) {
        const Action &action = actions[i % actions.size()];
        std::fprintf(stderr, "  %s, instance %" PRIu32 "\n", action.what, action.instance);
    }
}

} // namespace

void begin(uint64_t seed, uint32_t instances)
{
    runSeed = seed;
    runInstances = instances;
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(printLastActions);
}

void note(const char *what, uint32_t instance)
{
    actions[actionCount % actions.size()] = {what, instance};
    ++actionCount;
}

void require(bool holds, const char *what, uint32_t instance)
{
    if (holds) return;
    std::fprintf(stderr, "must hold but does not: %s (instance %" PRIu32 ")\n", what, instance);
    printLastActions();
    std::abort();
}

void print()
{
    for (const Tally *tally : {&steps, &blocks, &frames, &valuesSet, &edits, &nestedCalls, &chunksLoaded,
                               &chunksRefused, &idleChecks})
        std::printf("  %12" PRIu64 " %s\n", tally->count.load(), tally->what);
}

} // namespace Journal
