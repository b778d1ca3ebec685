#include "tests/realtime/Report.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <execinfo.h>
#include <unistd.h>

#include "tests/realtime/Controls.h"

// Ten times what a busy machine of two cores shows; a lock held for as long as a picture takes would be far above.
static constexpr double kMostWaitingBlocks = 0.02;
static constexpr uint64_t kLeastBlocks = 1000; // through the chain; a second plays far more

static void printPlaces(const Watch::Counts &counts)
{
    for (uint32_t i = 0; i < counts.sightCount; ++i) {
        const Watch::Sight &sight = counts.sights[i];
        std::printf("%s", sight.what);
        if (sight.number >= 0) std::printf(" number %ld", sight.number);
        std::printf(", from the innermost call outwards:\n");
        std::fflush(stdout);
        backtrace_symbols_fd(sight.frames.data(), sight.depth, STDOUT_FILENO);
    }
}

bool report(const Figures &figures)
{
    const Watch::Counts &counts = figures.counts;
    if (!figures.armed) {
        std::printf("  the kernel lets this program trap no system calls; nothing has been measured\n");
        return false;
    }
    if (figures.controlsFound)
        std::printf("  %" PRIu32 " planted faults found by each audio thread\n", Controls::plants());
    else
        std::printf("  planted faults MISSED\n");
    const struct {
        uint64_t count;
        const char *what;
    } rows[] = {{figures.threads, "audio threads"},
                {figures.blocks, "blocks in the steady state"},
                {figures.bypassedBlocks, "of them bypassed"},
                {counts.locks, "locks taken"},
                {counts.waits, "of them with another thread, so that this one yielded or slept"},
                {counts.wakes, "left with another thread asleep for them"},
                {counts.callsOfLocks, "system calls for these two"},
                {counts.allocations, "allocations"},
                {counts.releases, "releases of memory"},
                {counts.callsElsewhere, "other system calls"}};
    for (const auto &row : rows) std::printf("  %12" PRIu64 " %s\n", row.count, row.what);
    const double waiting = static_cast<double>(figures.waitingBlocks) /
                           static_cast<double>(std::max<uint64_t>(figures.blocks, 1));
    std::printf("  %11.3f%% of the blocks waited for a lock; %.0f%% are allowed\n", 100 * waiting,
                100 * kMostWaitingBlocks);
    printPlaces(counts);
    return figures.controlsFound && figures.blocks - figures.bypassedBlocks > kLeastBlocks &&
           counts.isQuiet() && waiting <= kMostWaitingBlocks;
}
