#include "platform/System.h"

#include <atomic>
#include <new>

namespace Platform {
namespace {

/// A futex with three states: Drepper, "Futexes Are Tricky" (2011), mutex 2, plus an owner for recursion.
/// Takes a third of the instructions of a recursive pthread mutex.
struct Lock {
    enum State : uint32_t { kFree, kHeld, kAwaited };
    std::atomic<uint32_t> state{kFree};
    uint32_t depth = 0;                       // accessed only by the owner
    std::atomic<const void *> owner{nullptr}; // the owner's thread pointer; only that thread can store it
};
static_assert(sizeof(Lock) <= sizeof(RecursiveLock) && alignof(Lock) <= alignof(RecursiveLock));

Lock &lockIn(std::byte *storage) { return *std::launder(reinterpret_cast<Lock *>(storage)); }

void take(Lock &lock, const void *self)
{
    lock.owner.store(self, std::memory_order_relaxed);
    lock.depth = 1;
}

/// Sleeps until this thread has the lock. Takes it as kAwaited, because other threads may still wait and
/// leave() must wake one. Not inlined, so that the uncontended path needs no stack frame.
[[gnu::noinline]] void waitAndTake(Lock &lock, const void *self)
{
    while (lock.state.exchange(Lock::kAwaited) != Lock::kFree) lock.state.wait(Lock::kAwaited);
    take(lock, self);
}

[[gnu::noinline]] void wakeOne(Lock &lock) { lock.state.notify_one(); }

} // namespace

RecursiveLock::RecursiveLock() { new (storage) Lock; }

RecursiveLock::~RecursiveLock() { lockIn(storage).~Lock(); }

void RecursiveLock::enter()
{
    Lock &lock = lockIn(storage);
    const void *self = __builtin_thread_pointer();
    if (lock.owner.load(std::memory_order_relaxed) == self) {
        ++lock.depth;
        return;
    }
    uint32_t found = Lock::kFree;
    if (!lock.state.compare_exchange_strong(found, Lock::kHeld)) return waitAndTake(lock, self);
    take(lock, self);
}

void RecursiveLock::leave()
{
    Lock &lock = lockIn(storage);
    if (--lock.depth != 0) return;
    lock.owner.store(nullptr, std::memory_order_relaxed);
    if (lock.state.exchange(Lock::kFree) == Lock::kAwaited) wakeOne(lock);
}

} // namespace Platform
