#pragma once
#include <cstdint>

/// Aligned memory for vectors. Part of the interface; no stage uses it.
/// Shape   32-byte aligned; the word before it contains the address that malloc returned
/// Thread  any except the audio thread, as it allocates
/// Errors  returns null if the length is below 1 or memory runs out
namespace DSP {

inline constexpr unsigned kVectorAlignment = 32;

uint8_t *ippsMalloc_8u(int len);
float *ippsMalloc_32f(int len);
double *ippsMalloc_64f(int len);

/// Frees memory that one of these functions returned; null is allowed.
void ippsFree(void *pointer);

} // namespace DSP
