#include "tests/host/Module.h"

#include <algorithm>
#include <iterator>
#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

namespace {

constexpr char kFile[] = "tessarine.dll"; // Windows looks beside the program first

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

// The compiler's thread library never frees the record of a thread that has loaded it, nor its first locks.
const int64_t Module::kKeptOfALoad = 1500;

Module::Module() : handle(LoadLibraryA(kFile)) {}

Module::~Module()
{
    if (handle) FreeLibrary(static_cast<HMODULE>(handle));
}

LoadedEffect::Entry Module::entry(const char *name) const
{
    FARPROC const found = handle ? GetProcAddress(static_cast<HMODULE>(handle), name) : nullptr;
    return reinterpret_cast<LoadedEffect::Entry>(reinterpret_cast<void *>(found));
}

bool Module::isLoaded() { return GetModuleHandleA(kFile) != nullptr; }

Holdings Holdings::now()
{
    PROCESS_MEMORY_COUNTERS_EX memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&memory),
                         sizeof memory);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return {heapBytesInUse(), static_cast<int64_t>(memory.PrivateUsage), ownThreads(), handles};
}
