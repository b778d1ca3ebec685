#pragma once
#include <utility>

#include "PluginBase/Util/String.h"
#include "platform/System.h"

namespace Util {

/// A recursive lock with a name, for debuggers and traces.
/// Thread  enter(), leave(): any. name(): only the thread that created the lock, as String is not thread-safe
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

/// Holds a lock until the end of the scope.
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
