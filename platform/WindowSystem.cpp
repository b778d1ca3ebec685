#include "platform/WindowSystem.h"

#include <atomic>
#include <cassert>

namespace Platform {

/// The operating system's window system, created at first use; null if there is none. Back ends define it.
WindowSystem *nativeWindowSystem();

namespace {

std::atomic<WindowSystem *> replacement = nullptr;

WindowSystem *current()
{
    WindowSystem *const chosen = replacement.load(std::memory_order_acquire);
    return chosen ? chosen : nativeWindowSystem();
}

} // namespace

bool hasWindowSystem() { return current(); }

WindowSystem &windowSystem()
{
    WindowSystem *const chosen = current();
    assert(chosen);
    return *chosen;
}

void useWindowSystem(WindowSystem *system) { replacement.store(system, std::memory_order_release); }

} // namespace Platform
