#include "dsp/operations/Memory.h"

#include <cstdlib>

namespace DSP {
namespace {

void *allocate(int len, unsigned elementSize)
{
    constexpr unsigned kOverhead = kVectorAlignment + sizeof(void *);
    const uint64_t size = static_cast<uint64_t>(len) * elementSize + kOverhead;
    if (len < 1 || size > PTRDIFF_MAX) return nullptr;
    void *raw = std::malloc(static_cast<size_t>(size));
    if (!raw) return nullptr;

    const auto firstUsable = reinterpret_cast<uintptr_t>(raw) + sizeof(void *);
    const uintptr_t aligned = (firstUsable + kVectorAlignment - 1) & ~uintptr_t{kVectorAlignment - 1};
    auto *storage = reinterpret_cast<void **>(aligned);
    storage[-1] = raw;
    return storage;
}

} // namespace

uint8_t *ippsMalloc_8u(int len) { return static_cast<uint8_t *>(allocate(len, sizeof(uint8_t))); }

float *ippsMalloc_32f(int len) { return static_cast<float *>(allocate(len, sizeof(float))); }

double *ippsMalloc_64f(int len) { return static_cast<double *>(allocate(len, sizeof(double))); }

void ippsFree(void *pointer)
{
    if (pointer) std::free(static_cast<void **>(pointer)[-1]);
}

} // namespace DSP
