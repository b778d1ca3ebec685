#include "platform/WindowSystem.h"

#include <atomic>
#include <cassert>

namespace Platform {

/// What the system itself offers, made at first use; null where there is none. Each back end has its own.
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
