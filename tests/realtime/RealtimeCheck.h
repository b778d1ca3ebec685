#pragma once
#include <array>
#include <cstdint>

/// Counts operations that may block a thread: allocating or freeing memory, waiting for a lock, and system calls. This
/// program replaces the C library's allocation functions; the linker wraps RecursiveLock; the kernel traps the system
/// calls of threads that have called arm(). Other locks need no wrapper, as waiting for one is a system call.
/// Thread: each thread has its own counts
namespace RealtimeCheck {

/// A forbidden operation and its backtrace.
struct Finding {
    const char *what;
    long number; // system call number, or -1
    std::array<void *, 24> frames;
    int depth;
};

struct Counts {
    uint64_t allocations = 0, releases = 0;
    uint64_t locks = 0;                   // RecursiveLock entered
    uint64_t waits = 0;                   // entered with a system call, as another thread held the lock
    uint64_t wakes = 0;                   // left with a system call, as another thread slept for the lock
    uint64_t callsOfLocks = 0;            // system calls in RecursiveLock
    uint64_t callsElsewhere = 0;          // all other system calls
    std::array<Finding, 8> findings = {}; // except in RecursiveLock; each backtrace once
    uint32_t findingCount = 0;

    bool isClean() const { return allocations == 0 && releases == 0 && callsElsewhere == 0; }
};

/// Makes the kernel trap the system calls of the calling thread until it ends. Returns false if the kernel refuses.
/// The thread cannot start other threads afterwards.
bool arm();

/// Counts the calling thread's operations during its lifetime.
class [[nodiscard]] Scope {
public:
    explicit Scope(Counts &counts);
    ~Scope();
    Scope(const Scope &) = delete;
};

// Internal to the check.

struct Thread {
    Counts *counts = nullptr; // null outside a Scope
    uint32_t lockDepth = 0;   // above 0 inside RecursiveLock
};
extern thread_local constinit Thread thread;

/// Adds a finding with the caller's backtrace.
void recordFinding(const char *what, long number = -1);

/// Attributes system calls during its lifetime to the lock. Needs a Scope on this thread.
class [[nodiscard]] LockWork {
public:
    /// Increments `counter` on destruction if there was a system call.
    explicit LockWork(uint64_t &counter) : withCalls(counter) { ++thread.lockDepth; }
    ~LockWork()
    {
        --thread.lockDepth;
        if (thread.counts->callsOfLocks != callsBefore) ++withCalls;
    }
    LockWork(const LockWork &) = delete;

private:
    uint64_t &withCalls;
    const uint64_t callsBefore = thread.counts->callsOfLocks;
};

} // namespace RealtimeCheck
