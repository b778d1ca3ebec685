#pragma once
#include <utility>

#include "PluginBase/Util/String.h"
#include "platform/System.h"

namespace Util {

/// A recursive lock that knows what it guards, for the reader of a debugger or a trace.
/// Thread  enter(), leave(): any. name(): the thread that made the lock, as no thread shares texts
class NamedLock {
public:
    explicit NamedLock(String lockName) : text(std::move(lockName)) {}
    void enter() { lock.enter(); }
    void leave() { lock.leave(); }
    const String &name() const { return text; }

private:
    Platform::RecursiveLock lock;
    String text;
};

/// Holds a lock to the end of the scope.
class [[nodiscard]] Hold {
public:
    explicit Hold(NamedLock &wanted) : lock(wanted) { lock.enter(); }
    ~Hold() { lock.leave(); }
    Hold(const Hold &) = delete;
    Hold &operator=(const Hold &) = delete;

private:
    NamedLock &lock;
};

} // namespace Util
