#include "tests/realtime/Controls.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/realtime/Watch.h"

using Watch::Counts;

namespace {

bool tookMemory(const Counts &counts) { return counts.allocations > 0 && counts.releases == 1; }

template <long number>
bool madeCall(const Counts &counts)
{
    return counts.callsElsewhere == 1 && counts.sights[0].number == number;
}

void *alignedInto()
{
    void *memory = nullptr;
    return posix_memalign(&memory, 64, 128) == 0 ? memory : nullptr;
}

/// What it returns, if anything, is given back.
struct Plant {
    const char *name;
    void *(*act)();
    bool (*isFound)(const Counts &counts);
};

constexpr std::align_val_t kAlignment{64};
constexpr Plant kPlants[] = {
    {"malloc", [] { return malloc(100); }, tookMemory},
    {"calloc", [] { return calloc(10, 10); }, tookMemory},
    {"realloc", [] { return realloc(nullptr, 100); }, tookMemory},
    {"aligned_alloc", [] { return aligned_alloc(64, 128); }, tookMemory},
    {"posix_memalign", alignedInto, tookMemory},
    {"operator new", [] { return ::operator new(100); }, tookMemory},
    {"operator new, aligned", [] { return ::operator new(100, kAlignment); }, tookMemory},
    {"memory from the system", [] { return malloc(64 << 20); },
     [](const Counts &counts) { return tookMemory(counts) && counts.sights[1].number == SYS_mmap; }},
    {"clock_gettime by its number",
     []() -> void * {
         timespec now;
         return syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now), nullptr;
     },
     madeCall<SYS_clock_gettime>},
    {"write to nowhere", []() -> void * { return write(-1, "", 1) < 0 ? nullptr : malloc(1); },
     madeCall<SYS_write>},
    {"sched_yield outside of a lock", []() -> void * { return sched_yield(), nullptr; },
     madeCall<SYS_sched_yield>},
};

bool missed(const char *name)
{
    std::printf("  the watch misjudges: %s\n", name);
    return false;
}

} // namespace

Controls::Controls() : holder([this] { holdLock(); }) {}

Controls::~Controls()
{
    stopping = true;
    holder.join();
}

uint32_t Controls::plants() { return static_cast<uint32_t>(std::size(kPlants) + 1); }

bool Controls::run()
{
    for (const Plant &plant : kPlants) {
        Counts counts;
        {
            const Watch::Scope scope(counts);
            free(plant.act()); // all of them give what it takes
        }
        if (!plant.isFound(counts) || counts.sightCount == 0) return missed(plant.name);
    }
    Counts counts;
    {
        const Watch::Scope scope(counts);
        lock.enter();
        lock.leave();
    }
    if (!counts.isQuiet() || counts.locks != 1 || counts.callsOfLocks != 0) return missed("a free lock");
    return findsTakenLock() || missed("a lock that another thread has");
}

void Controls::holdLock()
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

/// On a busy machine this thread may come when the lock is free again, so it has more than one turn.
bool Controls::findsTakenLock()
{
    for (int turn = 0; turn < 100; ++turn) {
        const uint32_t before = taken;
        wanted = true;
        while (taken == before) std::this_thread::yield();
        Counts counts;
        {
            const Watch::Scope scope(counts);
            lock.enter();
            lock.leave();
        }
        while (left == before) std::this_thread::yield();
        if (counts.waits > 0) return counts.isQuiet() && counts.waits == 1 && counts.callsOfLocks > 0;
    }
    return false;
}
