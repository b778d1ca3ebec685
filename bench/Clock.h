#pragma once
#include <ctime>

namespace Bench {

/// Time that the processor has spent on this program, in ns: what other programs take does not count.
inline double processorTime() { return 1e9 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

} // namespace Bench
