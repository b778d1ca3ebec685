#include "tests/host/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<uint64_t> allocations = 0;

void *allocate(std::size_t bytes, std::size_t alignment)
{
    ++allocations;
    const std::size_t whole = (bytes + alignment - 1) / alignment * alignment;
    void *const memory = std::aligned_alloc(alignment, whole != 0 ? whole : alignment);
    if (!memory) throw std::bad_alloc();
    return memory;
}

} // namespace

uint64_t allocationCount() { return allocations; }

// The array and nothrow forms of the library come back to these.
void *operator new(std::size_t bytes) { return allocate(bytes, __STDCPP_DEFAULT_NEW_ALIGNMENT__); }
void *operator new(std::size_t bytes, std::align_val_t alignment)
{
    return allocate(bytes, static_cast<std::size_t>(alignment));
}
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
