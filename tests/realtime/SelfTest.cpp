#include "tests/realtime/SelfTest.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/realtime/RealtimeCheck.h"

using RealtimeCheck::Counts;

namespace {

bool tookMemory(const Counts &counts) { return counts.allocations > 0 && counts.releases == 1; }

template <long number>
bool madeCall(const Counts &counts)
{
    return counts.callsElsewhere == 1 && counts.findings[0].number == number;
}

void *alignedInto()
{
    void *memory = nullptr;
    return posix_memalign(&memory, 64, 128) == 0 ? memory : nullptr;
}

/// `act` returns memory to free, or null.
struct PlantedFault {
    const char *name;
    void *(*act)();
    bool (*isFound)(const Counts &counts);
};

constexpr std::align_val_t kAlignment{64};
constexpr PlantedFault kPlantedFaults[] = {
    {"malloc", [] { return malloc(100); }, tookMemory},
    {"calloc", [] { return calloc(10, 10); }, tookMemory},
    {"realloc", [] { return realloc(nullptr, 100); }, tookMemory},
    {"aligned_alloc", [] { return aligned_alloc(64, 128); }, tookMemory},
    {"posix_memalign", alignedInto, tookMemory},
    {"operator new", [] { return ::operator new(100); }, tookMemory},
    {"operator new, aligned", [] { return ::operator new(100, kAlignment); }, tookMemory},
    {"memory from the system", [] { return malloc(64 << 20); },
     [](const Counts &counts) { return tookMemory(counts) && counts.findings[1].number == SYS_mmap; }},
    {"clock_gettime through syscall",
     []() -> void * {
         timespec now;
         return syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now), nullptr;
     },
     madeCall<SYS_clock_gettime>},
    {"write to an invalid descriptor", []() -> void * { return write(-1, "", 1) < 0 ? nullptr : malloc(1); },
     madeCall<SYS_write>},
    {"sched_yield outside a lock", []() -> void * { return sched_yield(), nullptr; },
     madeCall<SYS_sched_yield>},
};

bool missed(const char *name)
{
    std::printf("  the real-time check misjudges: %s\n", name);
    return false;
}

} // namespace

SelfTest::SelfTest() : holder([this] { holdLock(); }) {}

SelfTest::~SelfTest()
{
    stopping = true;
    holder.join();
}

uint32_t SelfTest::plantedFaults() { return static_cast<uint32_t>(std::size(kPlantedFaults) + 1); }

bool SelfTest::run()
{
    for (const PlantedFault &fault : kPlantedFaults) {
        Counts counts;
        {
            const RealtimeCheck::Scope scope(counts);
            free(fault.act());
        }
        if (!fault.isFound(counts) || counts.findingCount == 0) return missed(fault.name);
    }
    Counts counts;
    {
        const RealtimeCheck::Scope scope(counts);
        lock.enter();
        lock.leave();
    }
    if (!counts.isClean() || counts.locks != 1 || counts.callsOfLocks != 0) return missed("a free lock");
    return findsTakenLock() || missed("a lock held by another thread");
}

void SelfTest::holdLock()
{
    while (!stopping) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (!wanted.exchange(false)) continue;
        lock.enter();
        ++taken;
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
        lock.leave();
        ++left;
    }
}

/// Tries several times: on a busy machine the holder may release the lock before this thread enters it.
bool SelfTest::findsTakenLock()
{
    for (int turn = 0; turn < 100; ++turn) {
        const uint32_t before = taken;
        wanted = true;
        while (taken == before) std::this_thread::yield();
        Counts counts;
        {
            const RealtimeCheck::Scope scope(counts);
            lock.enter();
            lock.leave();
        }
        while (left == before) std::this_thread::yield();
        if (counts.waits > 0) return counts.isClean() && counts.waits == 1 && counts.callsOfLocks > 0;
    }
    return false;
}
