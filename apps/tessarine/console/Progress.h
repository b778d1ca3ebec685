#pragma once
#include <chrono>
#include <cstdint>

namespace App {

/// Progress bar on standard error, updated ten times a second and erased by the destructor. Prints only to a
/// terminal.
/// Errors  Interrupted from show
class Progress {
public:
    /// `total` is the number of frames to process, `rate` the sample rate in Hz.
    Progress(uint64_t total, uint32_t rate);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// `done` is the number of frames processed so far.
    void show(uint64_t done);

private:
    using Clock = std::chrono::steady_clock;
    const uint64_t total;
    const uint32_t rate;
    const bool visible;
    const Clock::time_point begin;
    Clock::time_point next;
};

} // namespace App
