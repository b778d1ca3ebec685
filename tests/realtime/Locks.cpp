#include "platform/System.h"
#include "tests/realtime/Watch.h"

using Platform::RecursiveLock;
using Watch::LockWork;

// The linker leads all calls of the platform's lock to the first of these, which go on to the lock itself.

void enterWatched(RecursiveLock *lock) asm("__wrap__ZN8Platform13RecursiveLock5enterEv");
void leaveWatched(RecursiveLock *lock) asm("__wrap__ZN8Platform13RecursiveLock5leaveEv");
void enterItself(RecursiveLock *lock) asm("__real__ZN8Platform13RecursiveLock5enterEv");
void leaveItself(RecursiveLock *lock) asm("__real__ZN8Platform13RecursiveLock5leaveEv");

void enterWatched(RecursiveLock *lock)
{
    Watch::Counts *const counts = Watch::thread.counts;
    if (!counts) return enterItself(lock);
    ++counts->locks;
    const LockWork work(counts->waits);
    enterItself(lock);
}

void leaveWatched(RecursiveLock *lock)
{
    Watch::Counts *const counts = Watch::thread.counts;
    if (!counts) return leaveItself(lock);
    const LockWork work(counts->wakes);
    leaveItself(lock);
}
