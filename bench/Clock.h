#pragma once
#include <ctime>

namespace Bench {

/// CPU time of this process in ns; time of other programs does not count.
inline double processorTime() { return 1e9 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

} // namespace Bench
