#pragma once
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Util {

/// A plain record that any thread reads and one thread at a time writes, without a lock. It is copied word by
/// word with relaxed memory order, so a reader may see a mix of fields from the last two stores.
/// Thread  load: any. store: one at a time; callers must synchronise
template <class T>
class SharedRecord {
    static_assert(std::is_trivially_copyable_v<T> && sizeof(T) % sizeof(uint32_t) == 0);

public:
    SharedRecord() { store(T{}); }
    T load() const
    {
        std::array<uint32_t, kWords> copy;
        for (size_t i = 0; i < kWords; ++i) copy[i] = words[i].load(std::memory_order_relaxed);
        return std::bit_cast<T>(copy); // not memcpy: GCC 12.2 -O2 reads the result before `copy` is filled
    }
    void store(const T &record)
    {
        std::array<uint32_t, kWords> copy;
        std::memcpy(copy.data(), &record, sizeof record);
        for (size_t i = 0; i < kWords; ++i) words[i].store(copy[i], std::memory_order_relaxed);
    }

private:
    static constexpr size_t kWords = sizeof(T) / sizeof(uint32_t);
    std::array<std::atomic<uint32_t>, kWords> words;
};

} // namespace Util
