#pragma once
#include <span>

#include "dsp/kernels/BlockKernels.h"
#include "dsp/kernels/CrossOverKernels.h"
#include "dsp/kernels/DynamicsKernels.h"
#include "dsp/kernels/MaximizerKernels.h"
#include "dsp/kernels/PowerKernels.h"
#include "dsp/kernels/SpectrumKernels.h"

namespace DSP::Kernels {

/// All kernels of one instruction set. Every table gives the same bits.
///
/// A group is a struct of function pointers in a header of its own, XKernels.h; X.kernel.cpp fills the
/// constant `xKernels` and is compiled once per set. A new group needs those two, a member here, two lines in
/// Kernels.cpp and its name in CMakeLists.txt.
struct Table {
    const char *name; // "portable", "sse2" or "avx2"
    const BlockKernels &block;
    const CrossOverKernels &crossOver;
    const DynamicsKernels &dynamics;
    const MaximizerKernels &maximizer;
    const PowerKernels &power;
    const SpectrumKernels &spectrum;
};

/// What active() gives, chosen when the library is loaded.
extern const Table *const chosenAtLoad;

/// The best set this processor runs. The environment variable TESSARINE_ISA may name another; a name that is
/// unknown or asks too much of the processor is passed over. Any thread, but not before main.
inline const Table &active() { return *chosenAtLoad; }

/// The tables this processor runs, plainest first.
std::span<const Table *const> available();

/// The table that `requested` (null for no wish) gets; `active()` asks with TESSARINE_ISA.
const Table &choose(const char *requested);

} // namespace DSP::Kernels
