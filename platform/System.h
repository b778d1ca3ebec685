#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// What the rooms above need from the operating system and the C++ library does not give. Each back end
/// (posix/, win32/) implements all of it; CMake picks one. Paths are 8-bit text in the system's own code
/// page. Nothing here throws except for lack of memory.
namespace Platform {

/// Mutual exclusion that its owner may enter again.
/// Cost    without contention a handful of instructions and no system call; a thread that has to wait sleeps
///         in the kernel
/// Thread  any; leave() only by the thread that entered, once for each enter()
/// Errors  none: destroying a lock that somebody holds is the caller's fault
class RecursiveLock {
public:
    RecursiveLock();
    ~RecursiveLock();
    RecursiveLock(const RecursiveLock &) = delete;
    RecursiveLock &operator=(const RecursiveLock &) = delete;
    void enter();
    void leave();

private:
    /// Room for any back end's lock, held in place so that an enter() follows no pointer.
    alignas(void *) std::byte storage[6 * sizeof(void *)];
};

/// One thread below all others in priority, for work that may come late. It has to notice by itself that it
/// shall stop, by asking sleep() or stopRequested(); it is never killed.
/// Thread  start(), join(): the owner. sleep(): the started thread. requestStop(), stopRequested(): any
class LowPriorityThread {
public:
    LowPriorityThread();
    /// Asks for the end and waits for it.
    ~LowPriorityThread();
    /// Runs `body` on a new thread. False if the system gives none, or one is already running.
    bool start(std::function<void()> body);
    void requestStop();
    bool stopRequested() const;
    /// Waits at most `milliseconds`; returns at once, with false, when the end has been asked for.
    bool sleep(uint32_t milliseconds);
    /// Waits at most `milliseconds` for the end of the body; true if no thread runs any more. After false the
    /// owner may serve what the thread waits for and join again.
    bool join(uint32_t milliseconds);

private:
    struct State;
    std::unique_ptr<State> state;
};

/// Milliseconds since some moment; wraps after 49.7 days, so compare by unsigned difference only. Never
/// blocks.
uint32_t tickCount();

/// The character between the parts of a path in this system's native writing.
char pathSeparator();

/// Path of the library or program that this code is linked into; empty on failure.
std::string modulePath();

/// True if something of that name exists, of whatever kind.
bool pathExists(const std::string &path);

/// Makes one directory whose parent exists. On failure lastError() tells why.
bool makeDirectory(const std::string &path);

/// The path with shortened parts written in full, where the system has such; elsewhere the path itself. Empty
/// if the system does not find it.
std::string longPathName(const std::string &path);

/// The calling thread's latest failure as the system numbers it.
uint32_t lastError();

enum class RegistryRoot : uint32_t { currentUser = 0x80000001, localMachine = 0x80000002 };

/// A value as the registry holds it.
struct RegistryValue {
    static constexpr uint32_t kText = 1, kExpandableText = 2, kDword = 4;
    uint32_t type;
    std::string bytes;
};

/// Looks a value up; nothing if the key or the value is missing, or the system keeps no registry.
std::optional<RegistryValue> readRegistry(RegistryRoot root, const std::string &key,
                                          const std::string &value);

} // namespace Platform
