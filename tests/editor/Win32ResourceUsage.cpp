#include "tests/editor/Win32Desk.h"

namespace {

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

/// Counts GDI objects. Wine does not count them, so try all handle indices.
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

ResourceUsage Win32Desk::resourceUsage() const
{
    ResourceUsage now = processUsage();
    now["windows"] = ownWindows();
    now["graphics"] = graphicsObjects();
    return now;
}
