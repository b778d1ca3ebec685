#include "tests/realtime/Report.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <execinfo.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

#include "tests/realtime/Controls.h"

namespace {

// Ten times what a busy machine of two cores shows; a lock held for as long as a picture takes would be far above.
constexpr double kMostWaitingBlocks = 0.02;
constexpr uint64_t kLeastBlocks = 1000; // through the chain; a second plays far more

std::string nameOf(size_t call)
{
    constexpr std::pair<size_t, const char *> kNames[] = {
        {SYS_futex, "futex"}, {SYS_sched_yield, "sched_yield"}, {SYS_clock_gettime, "clock_gettime"},
        {SYS_mmap, "mmap"},   {SYS_munmap, "munmap"},           {SYS_write, "write"}};
    for (const auto &[number, name] : kNames)
        if (number == call) return name;
    return "number " + std::to_string(call);
}

std::string listOf(const std::array<uint64_t, Watch::Counts::kCalls> &calls)
{
    std::string list;
    for (size_t i = 0; i < calls.size(); ++i)
        if (calls[i] != 0) list += (list.empty() ? "" : ", ") + std::to_string(calls[i]) + " " + nameOf(i);
    return list.empty() ? "none" : list;
}

void row(uint64_t count, const char *what, const std::string &more = {})
{
    std::printf("  %12" PRIu64 " %s%s\n", count, what, more.empty() ? "" : (": " + more).c_str());
}

void printPlaces(const Watch::Counts &counts)
{
    for (uint32_t i = 0; i < counts.sightCount; ++i) {
        const Watch::Sight &sight = counts.sights[i];
        std::printf("%s%s, from the innermost call outwards:\n", sight.what,
                    sight.number < 0 ? "" : (" " + nameOf(static_cast<size_t>(sight.number))).c_str());
        std::fflush(stdout);
        backtrace_symbols_fd(sight.frames.data(), sight.depth, STDOUT_FILENO);
    }
}

} // namespace

bool report(const Figures &figures, uint64_t settings, uint64_t messages)
{
    const Watch::Counts &counts = figures.counts;
    if (figures.way == Watch::Way::none) {
        std::printf("  the kernel lets this program trap no system calls; nothing has been measured\n");
        return false;
    }
    std::printf("  system calls trapped by %s\n", figures.way == Watch::Way::dispatch
                                                      ? "the kernel's dispatch to the user"
                                                      : "a filter of the kernel");
    row(figures.threads, "audio threads",
        figures.controlsFound ? std::to_string(Controls::plants()) + " planted faults found by each"
                              : "planted faults MISSED");
    row(figures.blocks, "blocks in the steady state");
    row(figures.bypassedBlocks, "of them bypassed");
    row(figures.frames, "frames in them");
    row(figures.valuesSet, "times that the audio thread itself set parameters");
    row(settings, "settings drawn");
    row(messages, "messages posted to the editor's window");
    row(counts.locks, "locks taken");
    row(counts.waits, "of them with another thread, so that this one yielded or slept");
    row(counts.wakes, "left with another thread asleep for them");
    row(counts.callsOfLocks, "system calls for these two", listOf(counts.lockCalls));
    row(counts.allocations, "allocations");
    row(counts.releases, "releases of memory");
    row(counts.callsElsewhere, "other system calls", listOf(counts.otherCalls));
    const double waiting = static_cast<double>(figures.waitingBlocks) /
                           static_cast<double>(std::max<uint64_t>(figures.blocks, 1));
    std::printf("  %11.3f%% of the blocks waited for a lock; %.0f%% are allowed\n", 100 * waiting,
                100 * kMostWaitingBlocks);
    printPlaces(counts);
    return figures.controlsFound && figures.blocks - figures.bypassedBlocks > kLeastBlocks &&
           counts.isQuiet() && waiting <= kMostWaitingBlocks;
}
