#pragma once
/// Result of a vector operation. Audio code may ignore it, because a rejected call changes no data.
namespace DSP {

enum VectorStatus : int {
    kVectorOk = 0,
    kVectorBadLength = -6,
    kVectorNullPointer = -8,
};

/// Checks the arguments of an operation on `length` elements. Null pointers take precedence over a bad length.
template <class... Pointers>
constexpr VectorStatus checkVectors(int length, const Pointers *...pointers)
{
    if ((... || !pointers)) return kVectorNullPointer;
    return length < 1 ? kVectorBadLength : kVectorOk;
}

} // namespace DSP
