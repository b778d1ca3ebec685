#include "apps/tessarine/console/Progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace {

constexpr int kBarWidth = 40;
constexpr std::chrono::milliseconds kInterval(100);

} // namespace

Progress::Progress(uint64_t frames, uint32_t hz)
    : total(frames),
      rate(hz),
      visible(isatty(STDERR_FILENO) != 0),
      begin(Clock::now()),
      next(begin + kInterval)
{
}

Progress::~Progress()
{
    if (visible) fmt::print(stderr, "\r\033[K");
}

void Progress::show(uint64_t done)
{
    stopIfInterrupted();
    if (!visible) return;
    const Clock::time_point now = Clock::now();
    if (now < next) return;
    next = now + kInterval;
    const double share = static_cast<double>(done) / static_cast<double>(total);
    const double seconds = std::chrono::duration<double>(now - begin).count();
    const auto filled = static_cast<size_t>(share * kBarWidth);
    fmt::print(stderr, "\r\033[K  {:#<{}}{:.<{}} {:3.0f} %  {:.0f} x real time", "", filled, "",
               kBarWidth - filled, share * 100.0, static_cast<double>(done) / rate / seconds);
    std::fflush(stderr);
}

} // namespace App
