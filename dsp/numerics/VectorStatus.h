#pragma once
/// What a vector operation answers. Callers on the audio path do not look: a refused call changes nothing.
namespace DSP {

enum VectorStatus : int {
    kVectorOk = 0,
    kVectorBadLength = -6,
    kVectorNullPointer = -8,
};

/// The first objection to the arguments of an operation over `length` elements.
template <class... Pointers>
constexpr VectorStatus checkVectors(int length, const Pointers *...pointers)
{
    if ((... || !pointers)) return kVectorNullPointer;
    return length < 1 ? kVectorBadLength : kVectorOk;
}

} // namespace DSP
