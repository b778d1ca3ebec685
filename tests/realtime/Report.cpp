#include "tests/realtime/Report.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <execinfo.h>
#include <unistd.h>

#include "tests/realtime/SelfTest.h"

// Ten times the share measured on a busy two-core machine. A lock held while the editor draws would far exceed it.
static constexpr double kMostWaitingBlocks = 0.02;
static constexpr uint64_t kLeastBlocks = 1000; // not bypassed; one second plays far more

static void printPlaces(const RealtimeCheck::Counts &counts)
{
    for (uint32_t i = 0; i < counts.findingCount; ++i) {
        const RealtimeCheck::Finding &finding = counts.findings[i];
        std::printf("%s", finding.what);
        if (finding.number >= 0) std::printf(" number %ld", finding.number);
        std::printf(", from the innermost call outwards:\n");
        std::fflush(stdout);
        backtrace_symbols_fd(finding.frames.data(), finding.depth, STDOUT_FILENO);
    }
}

bool report(const Figures &figures)
{
    const RealtimeCheck::Counts &counts = figures.counts;
    if (!figures.armed) {
        std::printf("  the kernel refuses to trap system calls; nothing was measured\n");
        return false;
    }
    if (figures.selfTestPassed)
        std::printf("  %" PRIu32 " planted faults found by each audio thread\n", SelfTest::plantedFaults());
    else
        std::printf("  planted faults MISSED\n");
    const struct {
        uint64_t count;
        const char *what;
    } rows[] = {{figures.threads, "audio threads"},
                {figures.blocks, "blocks in the steady state"},
                {figures.bypassedBlocks, "bypassed blocks"},
                {counts.locks, "locks entered"},
                {counts.waits, "locks waited for, as another thread held them"},
                {counts.wakes, "locks left while another thread slept for them"},
                {counts.callsOfLocks, "system calls for these waits and wake-ups"},
                {counts.allocations, "allocations"},
                {counts.releases, "releases of memory"},
                {counts.callsElsewhere, "other system calls"}};
    for (const auto &row : rows) std::printf("  %12" PRIu64 " %s\n", row.count, row.what);
    const double waiting = static_cast<double>(figures.waitingBlocks) /
                           static_cast<double>(std::max<uint64_t>(figures.blocks, 1));
    std::printf("  %11.3f%% of the blocks waited for a lock (limit: %.0f%%)\n", 100 * waiting,
                100 * kMostWaitingBlocks);
    printPlaces(counts);
    return figures.selfTestPassed && figures.blocks - figures.bypassedBlocks > kLeastBlocks &&
           counts.isClean() && waiting <= kMostWaitingBlocks;
}
