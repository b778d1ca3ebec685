#pragma once
#include <atomic>

namespace Util {

/// A plain value that several threads read and write without a lock, with relaxed memory order. A reader may
/// see a value that is one block old. On all supported processors, a load or store is one instruction.
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
    /// Stores a value and returns true if it differs from the stored one. If two threads change it at the
    /// same time, both may get true.
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
