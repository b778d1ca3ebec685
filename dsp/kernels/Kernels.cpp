#include "dsp/kernels/Kernels.h"

#include <cstdlib>
#include <string_view>

/// Declares the kernel groups of one instruction-set variant and defines its table.
#define TESSARINE_KERNEL_SET(set)                                                                            \
    namespace DSP::Kernels::set {                                                                            \
    extern const BlockKernels blockKernels;                                                                  \
    extern const CrossOverKernels crossOverKernels;                                                          \
    extern const DynamicsKernels dynamicsKernels;                                                            \
    extern const MaximizerKernels maximizerKernels;                                                          \
    extern const PowerKernels powerKernels;                                                                  \
    extern const SpectrumKernels spectrumKernels;                                                            \
    static constexpr Table table = {                                                                         \
        .name = #set,                                                                                        \
        .block = blockKernels,                                                                               \
        .crossOver = crossOverKernels,                                                                       \
        .dynamics = dynamicsKernels,                                                                         \
        .maximizer = maximizerKernels,                                                                       \
        .power = powerKernels,                                                                               \
        .spectrum = spectrumKernels,                                                                         \
    };                                                                                                       \
    }

TESSARINE_KERNEL_SET(portable)
#ifdef TESSARINE_X86_KERNELS // defined by CMakeLists.txt if it compiles the x86 variants
TESSARINE_KERNEL_SET(sse2)
TESSARINE_KERNEL_SET(avx2)
#endif

namespace DSP::Kernels {

namespace {

#ifdef TESSARINE_X86_KERNELS
constexpr const Table *kTables[] = {&portable::table, &sse2::table, &avx2::table};

size_t countRunnable()
{
    __builtin_cpu_init();
    if (!__builtin_cpu_supports("sse2")) return 1;
    return __builtin_cpu_supports("avx2") ? 3 : 2;
}
#else
constexpr const Table *kTables[] = {&portable::table};

size_t countRunnable() { return 1; }
#endif

} // namespace

std::span<const Table *const> available()
{
    static const size_t count = countRunnable();
    return {kTables, count};
}

const Table &choose(const char *requested)
{
    if (requested)
        for (const Table *table : available())
            if (std::string_view(requested) == table->name) return *table;
    return *available().back();
}

const Table *const chosenAtLoad = &choose(std::getenv("TESSARINE_ISA"));

} // namespace DSP::Kernels
