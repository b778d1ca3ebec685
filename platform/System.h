#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Services of the operating system that the C++ library lacks. Each back end (posix/, win32/) implements all
/// of them; CMake picks one. Paths are 8-bit strings in the system's code page. Functions throw nothing but
/// std::bad_alloc.
namespace Platform {

/// A recursive mutex.
/// Cost    uncontended: a few instructions and no system call; a waiting thread sleeps in the kernel
/// Thread  any; leave() only on the thread that entered, once for each enter()
/// Errors  none; the caller must not destroy a lock that a thread holds
class RecursiveLock {
public:
    RecursiveLock();
    ~RecursiveLock();
    RecursiveLock(const RecursiveLock &) = delete;
    RecursiveLock &operator=(const RecursiveLock &) = delete;
    void enter();
    void leave();

private:
    /// Large enough for any back end's lock; in place, so that enter() follows no pointer.
    alignas(void *) std::byte storage[6 * sizeof(void *)];
};

/// A thread of lowest priority, for work that may be delayed. It is never killed: `body` must return when
/// sleep() returns false or stopRequested() returns true.
/// Thread  start(), join(): the owner. sleep(): the started thread. requestStop(), stopRequested(): any
class LowPriorityThread {
public:
    LowPriorityThread();
    /// Requests the stop and waits for it.
    ~LowPriorityThread();
    /// Runs `body` on a new thread. False if the thread is already running or the system cannot create one.
    bool start(std::function<void()> body);
    void requestStop();
    bool stopRequested() const;
    /// Waits `milliseconds` and returns true; returns false at once when a stop is requested.
    bool sleep(uint32_t milliseconds);
    /// Waits at most `milliseconds` for `body` to return; true if the thread has ended. After false the owner
    /// may serve the thread's requests and call join() again.
    bool join(uint32_t milliseconds);

private:
    struct State;
    std::unique_ptr<State> state;
};

/// Milliseconds since an arbitrary start; wraps after 49.7 days, so compare by unsigned difference only.
/// Never blocks.
uint32_t tickCount();

/// The separator in this system's native paths.
char pathSeparator();

/// Path of the library or program that contains this code; empty on failure.
std::string modulePath();

/// True if a file of that name exists, of any kind, directories included.
bool pathExists(const std::string &path);

/// Creates one directory; its parent must exist. On failure lastError() returns the reason.
bool makeDirectory(const std::string &path);

/// Expands short (8.3) names on Windows; elsewhere returns the path itself. Empty if it does not exist.
std::string longPathName(const std::string &path);

/// The system's error number of the calling thread's latest failure.
uint32_t lastError();

enum class RegistryRoot : uint32_t { currentUser = 0x80000001, localMachine = 0x80000002 };

/// A value as stored in the registry.
struct RegistryValue {
    static constexpr uint32_t kText = 1, kExpandableText = 2, kDword = 4;
    uint32_t type;
    std::string bytes;
};

/// Reads a value; nullopt if the key or the value is missing, or if the system has no registry.
std::optional<RegistryValue> readRegistry(RegistryRoot root, const std::string &key,
                                          const std::string &value);

} // namespace Platform
