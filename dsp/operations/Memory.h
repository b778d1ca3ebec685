#pragma once
#include <cstdint>

/// Storage for vectors. Part of the interface; no stage uses it.
/// Shape   starts at a multiple of 32 bytes; the word before it holds the address that the system gave
/// Thread  any, but it allocates: never on the audio thread in steady state
/// Errors  null for a length below 1 and when memory is out
namespace DSP {

inline constexpr unsigned kVectorAlignment = 32;

uint8_t *ippsMalloc_8u(int len);
float *ippsMalloc_32f(int len);
double *ippsMalloc_64f(int len);

/// Releases what one of the above returned; null does nothing.
void ippsFree(void *pointer);

} // namespace DSP
