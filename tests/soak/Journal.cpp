#include "tests/soak/Journal.h"

#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

// Called by a sanitizer that is about to end the program; absent without one.
extern "C" __attribute__((weak)) void
__sanitizer_set_death_callback(void (*callback)()); // NOLINT(bugprone-reserved-identifier)

namespace Journal {

Counts counts;

namespace {

struct Deed {
    const char *what;
    uint32_t instance;
};
std::array<Deed, 16> deeds;
std::atomic<uint64_t> deedCount;
uint64_t runSeed;
uint32_t runInstances;

void tellHowToReplay()
{
    const uint64_t steps = counts.windowSteps;
    std::fprintf(stderr,
                 "soak: failed at step %" PRIu64 ". The same choices in one thread:\n"
                 "  tessarine_soak --replay --seed %" PRIu64 " --instances %" PRIu32 " --steps %" PRIu64 "\n"
                 "soak: the window thread's last deeds:\n",
                 steps, runSeed, runInstances, steps + 1);
    const uint64_t count = deedCount;
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
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(tellHowToReplay);
}

void note(const char *what, uint32_t instance)
{
    deeds[deedCount % deeds.size()] = {what, instance};
    ++deedCount;
}

void require(bool holds, const char *what, uint32_t instance)
{
    if (holds) return;
    std::fprintf(stderr, "soak: must hold, and does not: %s (instance %" PRIu32 ")\n", what, instance);
    tellHowToReplay();
    std::abort();
}

void print(double seconds)
{
    const struct {
        const char *what;
        const std::atomic<uint64_t> &count;
    } lines[] = {
        {"steps of the window thread", counts.windowSteps},
        {"blocks", counts.blocks},
        {"frames", counts.frames},
        {"values set by the host", counts.valuesSet},
        {"pauses and resumptions", counts.pauses},
        {"rates, layouts and options changed", counts.settings},
        {"envelopes set", counts.envelopes},
        {"editors opened", counts.editorsOpened},
        {"editors closed", counts.editorsClosed},
        {"deeds of the person", counts.personActions},
        {"edits told to the host", counts.edits},
        {"acts of the host inside a call", counts.actsInsideCalls},
        {"chunks taken", counts.chunksTaken},
        {"chunks refused, nothing changed", counts.chunksRefused},
        {"instances loaded anew", counts.reloads},
        {"checks at rest", counts.idleChecks},
    };
    std::printf("  %.0f seconds\n", seconds);
    for (const auto &line : lines) std::printf("  %12" PRIu64 " %s\n", line.count.load(), line.what);
}

} // namespace Journal
