#include "tests/host/ResourceUsage.h"

#include <iterator>
#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

namespace {

int64_t heapBytesInUse()
{
    HANDLE heaps[64] = {};
    const DWORD count = std::min<DWORD>(GetProcessHeaps(std::size(heaps), heaps), std::size(heaps));
    int64_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

int64_t ownThreads()
{
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof thread;
    int64_t count = 0;
    for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(all);
    return count;
}

} // namespace

ResourceUsage processUsage()
{
    PROCESS_MEMORY_COUNTERS_EX memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&memory),
                         sizeof memory);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return {{"heap", heapBytesInUse()},
            {"memory", static_cast<int64_t>(memory.PrivateUsage)},
            {"threads", ownThreads()},
            {"handles", handles}};
}
