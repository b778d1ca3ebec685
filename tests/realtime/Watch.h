#pragma once
#include <array>
#include <cstdint>

/// Sees what may keep a thread waiting: memory asked for or given back, locks that another thread has, and
/// system calls. The functions of the C library for memory stand in this program in a form that counts and goes on;
/// the platform's lock is wrapped by the linker; and the kernel hands every system call of an armed thread back to
/// it. The audio thread takes no other locks: one that has to wait for any would be seen by its system call.
/// Thread  each for itself
namespace Watch {

/// Where in the program something was seen that should not be there.
struct Sight {
    const char *what;
    long number; // of the system call
    std::array<void *, 24> frames;
    int depth;
};

struct Counts {
    uint64_t allocations = 0, releases = 0;
    uint64_t locks = 0;        // entries into the platform's lock
    uint64_t waits = 0;        // of these: made a system call, as another thread had the lock
    uint64_t wakes = 0;        // left a lock that another thread slept for
    uint64_t callsOfLocks = 0; // system calls inside of these two, and all others
    uint64_t callsElsewhere = 0;
    std::array<Sight, 8> sights = {}; // of all that is no lock's, once for each place
    uint32_t sightCount = 0;

    bool isQuiet() const { return allocations == 0 && releases == 0 && callsElsewhere == 0; }
};

/// Makes the kernel hand over the system calls of the calling thread, to its end; false if it refuses the filter.
/// Such a thread can start no other one.
bool arm();

/// Counts what the calling thread does from here to the end of the scope.
class [[nodiscard]] Scope {
public:
    explicit Scope(Counts &counts);
    ~Scope();
    Scope(const Scope &) = delete;
};

// For the parts of the watch.

struct Thread {
    Counts *counts = nullptr; // null while nothing is watched
    uint32_t lockDepth = 0;   // inside the code of locks
};
extern thread_local constinit Thread thread;

/// Notes the place that calls this.
void saw(const char *what, long number = -1);

/// Entering or leaving a lock, by a watched thread.
class [[nodiscard]] LockWork {
public:
    explicit LockWork(uint64_t &countOfCallers) : needed(countOfCallers) { ++thread.lockDepth; }
    ~LockWork()
    {
        --thread.lockDepth;
        if (thread.counts->callsOfLocks != callsBefore) ++needed;
    }
    LockWork(const LockWork &) = delete;

private:
    uint64_t &needed; // counts those that made a system call
    const uint64_t callsBefore = thread.counts->callsOfLocks;
};

} // namespace Watch
