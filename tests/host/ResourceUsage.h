#pragma once
#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

/// Resources used by this process: "heap" (allocated) and "memory" (private) in bytes, "threads", "handles" (open
/// files on Linux, all handles on Windows).
using ResourceUsage = std::map<std::string, int64_t>;

ResourceUsage processUsage();

/// Smallest growth of each resource over several runs of `uses` calls, after a warm-up. A leak grows in every run; a
/// thread or file that the system opens in the background affects only one.
inline ResourceUsage leastGrowth(int uses, const std::function<void()> &use,
                                 const std::function<ResourceUsage()> &measure = processUsage)
{
    constexpr int kRuns = 3;
    ResourceUsage least;
    for (int i = 0; i < uses; ++i) use();
    ResourceUsage before = measure();
    for (int run = 0; run < kRuns; ++run) {
        for (int i = 0; i < uses; ++i) use();
        ResourceUsage after = measure();
        for (const auto &[what, count] : after) {
            const int64_t growth = count - before[what];
            least[what] = run == 0 ? growth : std::min(least[what], growth);
        }
        before = std::move(after);
    }
    return least;
}
