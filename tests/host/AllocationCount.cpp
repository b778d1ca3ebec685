#include "tests/host/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<uint64_t> allocations = 0;

// Plain storage with its own address kept in front of the aligned one: not every system has an aligned malloc that
// free takes back.
void *allocate(std::size_t bytes, std::size_t alignment)
{
    ++allocations;
    auto *const storage = static_cast<char *>(std::malloc(bytes + alignment + sizeof(void *)));
    if (!storage) throw std::bad_alloc();
    const auto past = reinterpret_cast<uintptr_t>(storage) + sizeof(void *) + alignment - 1;
    auto **const memory = reinterpret_cast<void **>(past / alignment * alignment);
    memory[-1] = storage;
    return memory;
}

void release(void *memory)
{
    if (memory) std::free(static_cast<void **>(memory)[-1]);
}

} // namespace

uint64_t allocationCount() { return allocations; }

// The array forms of the library come back to these. The nothrow form does so too, but not the one that the
// address sanitizer puts in its place, and what it gives is freed by the plain delete.
void *operator new(std::size_t bytes) { return allocate(bytes, __STDCPP_DEFAULT_NEW_ALIGNMENT__); }
void *operator new(std::size_t bytes, const std::nothrow_t &) noexcept
{
    try {
        return operator new(bytes);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}
void *operator new(std::size_t bytes, std::align_val_t alignment)
{
    return allocate(bytes, static_cast<std::size_t>(alignment));
}
void operator delete(void *memory) noexcept { release(memory); }
void operator delete(void *memory, std::size_t) noexcept { release(memory); }
void operator delete(void *memory, std::align_val_t) noexcept { release(memory); }
void operator delete(void *memory, std::size_t, std::align_val_t) noexcept { release(memory); }
