#pragma once
#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

/// What this process has of the system: "heap" (asked for and not given back) and "memory" (all of its own) in bytes,
/// "threads", "handles" (open files, or whatever the system counts).
using Holdings = std::map<std::string, int64_t>;

Holdings ownHoldings();

/// What `uses` uses leave behind at least, after some that set up what the system sets up once. A leak grows in every
/// stretch of uses; a thread or a file that the system opens or closes meanwhile does so in one.
inline Holdings leastLeftBehind(int uses, const std::function<void()> &use,
                                const std::function<Holdings()> &measure = ownHoldings)
{
    constexpr int kStretches = 3;
    Holdings least;
    for (int i = 0; i < uses; ++i) use();
    Holdings before = measure();
    for (int stretch = 0; stretch < kStretches; ++stretch) {
        for (int i = 0; i < uses; ++i) use();
        Holdings after = measure();
        for (const auto &[what, count] : after) {
            const int64_t growth = count - before[what];
            least[what] = stretch == 0 ? growth : std::min(least[what], growth);
        }
        before = std::move(after);
    }
    return least;
}
