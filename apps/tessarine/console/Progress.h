#pragma once
#include <chrono>
#include <cstdint>

namespace App {

/// One line on standard error that tells how far the work is, rewritten ten times a second and removed at the
/// end. Silent if standard error is not a terminal.
/// Errors  Interrupted from show
class Progress {
public:
    /// `total` in frames at `rate` Hz.
    Progress(uint64_t total, uint32_t rate);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

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
