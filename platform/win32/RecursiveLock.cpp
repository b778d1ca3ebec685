#include "platform/System.h"

#include <new>
#include <windows.h>

namespace Platform {
namespace {

/// Spins before it sleeps, because the holder usually leaves within a few hundred instructions.
constexpr DWORD kSpinCount = 400;

CRITICAL_SECTION *sectionIn(std::byte *storage)
{
    return std::launder(reinterpret_cast<CRITICAL_SECTION *>(storage));
}

} // namespace

RecursiveLock::RecursiveLock()
{
    static_assert(sizeof(CRITICAL_SECTION) <= sizeof(RecursiveLock));
    static_assert(alignof(CRITICAL_SECTION) <= alignof(RecursiveLock));
    InitializeCriticalSectionAndSpinCount(new (storage) CRITICAL_SECTION, kSpinCount);
}

RecursiveLock::~RecursiveLock() { DeleteCriticalSection(sectionIn(storage)); }

void RecursiveLock::enter() { EnterCriticalSection(sectionIn(storage)); }

void RecursiveLock::leave() { LeaveCriticalSection(sectionIn(storage)); }

} // namespace Platform
