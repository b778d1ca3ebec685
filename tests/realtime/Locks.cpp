#include "platform/System.h"
#include "tests/realtime/RealtimeCheck.h"

using Platform::RecursiveLock;
using RealtimeCheck::LockWork;

// The linker's --wrap option redirects all calls of RecursiveLock to enterCounted and leaveCounted.

void enterCounted(RecursiveLock *lock) asm("__wrap__ZN8Platform13RecursiveLock5enterEv");
void leaveCounted(RecursiveLock *lock) asm("__wrap__ZN8Platform13RecursiveLock5leaveEv");
void enterItself(RecursiveLock *lock) asm("__real__ZN8Platform13RecursiveLock5enterEv");
void leaveItself(RecursiveLock *lock) asm("__real__ZN8Platform13RecursiveLock5leaveEv");

void enterCounted(RecursiveLock *lock)
{
    RealtimeCheck::Counts *const counts = RealtimeCheck::thread.counts;
    if (!counts) return enterItself(lock);
    ++counts->locks;
    const LockWork work(counts->waits);
    enterItself(lock);
}

void leaveCounted(RecursiveLock *lock)
{
    RealtimeCheck::Counts *const counts = RealtimeCheck::thread.counts;
    if (!counts) return leaveItself(lock);
    const LockWork work(counts->wakes);
    leaveItself(lock);
}
