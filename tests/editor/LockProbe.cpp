#include "tests/editor/LockProbe.h"

#include <atomic>
#include <ctime>
#include <mutex>
#include <new>

#include "platform/System.h"

namespace LockProbe {
namespace {

struct Lock {
    std::recursive_mutex mutex;
    std::atomic<bool> ofAudio = false; // taken by the audio thread at some time
    uint32_t depth = 0;                // the owner's
    uint64_t since = 0;                // the owner's processor time
};

thread_local Role ownRole = Role::other;
std::atomic<uint64_t> audioEntries, windowEntries, longestHold;

void raise(std::atomic<uint64_t> &most, uint64_t value)
{
    uint64_t known = most.load();
    while (value > known && !most.compare_exchange_weak(known, value)) {}
}

} // namespace

void setRole(Role role) { ownRole = role; }

uint64_t threadTimeNs()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<uint64_t>(time.tv_sec) * 1000000000 + static_cast<uint64_t>(time.tv_nsec);
}

Figures take() { return {audioEntries.exchange(0), windowEntries.exchange(0), longestHold.exchange(0)}; }

namespace {

Lock &lockIn(std::byte *storage) { return **std::launder(reinterpret_cast<Lock **>(storage)); }

void enter(Lock &lock)
{
    lock.mutex.lock();
    if (++lock.depth > 1) return;
    if (ownRole == Role::audio) {
        lock.ofAudio = true;
        ++audioEntries;
    } else if (ownRole == Role::window) {
        ++windowEntries;
        lock.since = threadTimeNs();
    }
}

void leave(Lock &lock)
{
    if (--lock.depth == 0 && ownRole == Role::window && lock.ofAudio)
        raise(longestHold, threadTimeNs() - lock.since);
    lock.mutex.unlock();
}

} // namespace
} // namespace LockProbe

namespace Platform {

using LockProbe::lockIn;

RecursiveLock::RecursiveLock() { new (storage) LockProbe::Lock *(new LockProbe::Lock); }
RecursiveLock::~RecursiveLock() { delete &lockIn(storage); }
void RecursiveLock::enter() { LockProbe::enter(lockIn(storage)); }
void RecursiveLock::leave() { LockProbe::leave(lockIn(storage)); }

} // namespace Platform
