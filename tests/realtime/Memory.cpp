#include <cerrno>
#include <cstdlib>

#include "tests/realtime/RealtimeCheck.h"

// Replaces the C library's allocation functions with counting ones; operator new and delete use them, too.

void *mallocOfLibrary(size_t bytes) asm("__libc_malloc");
void *callocOfLibrary(size_t count, size_t bytes) asm("__libc_calloc");
void *reallocOfLibrary(void *memory, size_t bytes) asm("__libc_realloc");
void *memalignOfLibrary(size_t alignment, size_t bytes) asm("__libc_memalign");
void freeOfLibrary(void *memory) asm("__libc_free");

namespace {

void countAllocation()
{
    if (!RealtimeCheck::thread.counts) return;
    ++RealtimeCheck::thread.counts->allocations;
    RealtimeCheck::recordFinding("allocation");
}

} // namespace

extern "C" void *malloc(size_t bytes) noexcept
{
    countAllocation();
    return mallocOfLibrary(bytes);
}

extern "C" void *calloc(size_t count, size_t bytes) noexcept
{
    countAllocation();
    return callocOfLibrary(count, bytes);
}

extern "C" void *realloc(void *memory, size_t bytes) noexcept
{
    countAllocation();
    return reallocOfLibrary(memory, bytes);
}

extern "C" void *memalign(size_t alignment, size_t bytes) noexcept
{
    countAllocation();
    return memalignOfLibrary(alignment, bytes);
}

extern "C" void *aligned_alloc(size_t alignment, size_t bytes) noexcept { return memalign(alignment, bytes); }

extern "C" int posix_memalign(void **memory, size_t alignment, size_t bytes) noexcept
{
    *memory = memalign(alignment, bytes);
    return *memory ? 0 : ENOMEM;
}

extern "C" void free(void *memory) noexcept
{
    if (memory && RealtimeCheck::thread.counts) {
        ++RealtimeCheck::thread.counts->releases;
        RealtimeCheck::recordFinding("release");
    }
    freeOfLibrary(memory);
}
