#pragma once
#include <atomic>

namespace Util {

/// A plain value that several threads read and write without a lock. A reader sees some value that was
/// stored, possibly one block old; nothing is ordered by it. On every processor we build for, a load or store
/// of it is one ordinary instruction.
template <class T>
class Shared {
public:
    constexpr Shared(T initial = T{}) : value(initial) {}
    Shared(const Shared &other) : value(other.load()) {}
    Shared &operator=(const Shared &other)
    {
        store(other.load());
        return *this;
    }
    T operator=(T next)
    {
        store(next);
        return next;
    }
    operator T() const { return load(); }
    T load() const { return value.load(std::memory_order_relaxed); }
    void store(T next) { value.store(next, std::memory_order_relaxed); }
    /// Stores another value; false for the same. Of two threads that do so at once both may be told true.
    bool change(T next)
    {
        if (load() == next) return false;
        store(next);
        return true;
    }
    T exchange(T next) { return value.exchange(next, std::memory_order_relaxed); }

private:
    std::atomic<T> value;
};

} // namespace Util
