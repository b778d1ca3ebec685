#pragma once
#include <span>

#include "dsp/kernels/BlockKernels.h"
#include "dsp/kernels/CrossOverKernels.h"
#include "dsp/kernels/DynamicsKernels.h"
#include "dsp/kernels/MaximizerKernels.h"
#include "dsp/kernels/PowerKernels.h"
#include "dsp/kernels/SpectrumKernels.h"

namespace DSP::Kernels {

/// All kernels of one instruction-set variant. Every variant gives the same bits.
///
/// A group X is a struct of function pointers in XKernels.h. X.kernel.cpp defines the constant `xKernels` and is
/// compiled once per variant. A new group needs both files, a member here, two lines in Kernels.cpp and an entry
/// in CMakeLists.txt.
struct Table {
    const char *name; // "portable", "sse2" or "avx2"
    const BlockKernels &block;
    const CrossOverKernels &crossOver;
    const DynamicsKernels &dynamics;
    const MaximizerKernels &maximizer;
    const PowerKernels &power;
    const SpectrumKernels &spectrum;
};

/// The table that active() returns; initialised when the library is loaded.
extern const Table *const chosenAtLoad;

/// Returns the fastest variant that this processor supports, or the one named by the environment variable
/// TESSARINE_ISA. Ignores unknown and unsupported names. Any thread, but not before main.
inline const Table &active() { return *chosenAtLoad; }

/// The variants that this processor supports, slowest first.
std::span<const Table *const> available();

/// Returns the variant named `requested`, or the fastest one if that is null, unknown or unsupported.
const Table &choose(const char *requested);

} // namespace DSP::Kernels
