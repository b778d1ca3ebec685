#include "platform/win32/Win32WindowSystem.h"

namespace Platform {

WindowSystem *nativeWindowSystem()
{
    static Win32WindowSystem system;
    return &system;
}

} // namespace Platform
