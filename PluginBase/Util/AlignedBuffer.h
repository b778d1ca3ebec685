#pragma once
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Util {

/// Sample storage aligned to 32 bytes for wide vector loads. It never shrinks: once it has grown to the
/// largest block, grow() allocates no more.
/// Errors  out of memory: std::bad_alloc, and the buffer is unchanged
/// Thread  one at a time; grow() allocates only beyond the largest size so far
template <class T>
class AlignedBuffer {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    static constexpr size_t kAlignment = 32;

    AlignedBuffer() = default;
    explicit AlignedBuffer(size_t elements) { grow(elements); }
    AlignedBuffer(AlignedBuffer &&other) noexcept { swap(other); }
    AlignedBuffer &operator=(AlignedBuffer &&other) noexcept
    {
        AlignedBuffer taken(std::move(other));
        swap(taken);
        return *this;
    }

    /// Grows to at least `elements`, which may move the data. Keeps the old elements and zeroes the new ones.
    void grow(size_t elements)
    {
        if (elements <= count) return;
        if (elements > std::numeric_limits<size_t>::max() / sizeof(T)) throw std::bad_array_new_length();
        Memory larger(static_cast<T *>(::operator new (elements * sizeof(T), std::align_val_t{kAlignment})));
        if (count != 0) std::memcpy(larger.get(), memory.get(), count * sizeof(T));
        std::memset(static_cast<void *>(larger.get() + count), 0, (elements - count) * sizeof(T));
        memory.swap(larger);
        count = elements;
    }

    size_t size() const { return count; }
    T *data() { return std::assume_aligned<kAlignment>(memory.get()); }
    const T *data() const { return std::assume_aligned<kAlignment>(memory.get()); }
    T &operator[](size_t index) { return memory.get()[index]; }
    const T &operator[](size_t index) const { return memory.get()[index]; }
    T *begin() { return data(); }
    T *end() { return data() + count; }
    const T *begin() const { return data(); }
    const T *end() const { return data() + count; }

private:
    struct Release {
        void operator()(T *block) const { ::operator delete (block, std::align_val_t{kAlignment}); }
    };
    using Memory = std::unique_ptr<T, Release>;

    void swap(AlignedBuffer &other) noexcept
    {
        memory.swap(other.memory);
        std::swap(count, other.count);
    }

    Memory memory;
    size_t count = 0;
};

} // namespace Util
