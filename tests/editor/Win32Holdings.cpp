#include <algorithm>
#include <iterator>

#include "tests/editor/Win32Desk.h"

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

BOOL CALLBACK countWindow(HWND, LPARAM count)
{
    ++*reinterpret_cast<int64_t *>(count);
    return TRUE;
}

BOOL CALLBACK countTopLevel(HWND window, LPARAM count)
{
    countWindow(window, count);
    EnumChildWindows(window, &countWindow, count);
    return TRUE;
}

int64_t ownWindows()
{
    int64_t count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &countTopLevel, reinterpret_cast<LPARAM>(&count));
    return count;
}

/// Wine does not count them, but tells of each by the low half of its handle.
int64_t graphicsObjects()
{
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return counted;
    constexpr uintptr_t kMostObjects = 0x4000;
    int64_t count = 0;
    for (uintptr_t index = 1; index < kMostObjects; ++index)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0;
    return count;
}

} // namespace

DeskHoldings Win32Desk::holdings() const
{
    DeskHoldings now;
    now.windows = ownWindows();
    now.graphics = graphicsObjects();
    now.threads = ownThreads();
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    now.handles = handles;
    now.heapBytes = heapBytesInUse();
    return now;
}
