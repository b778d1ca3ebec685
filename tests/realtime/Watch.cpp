#include "tests/realtime/Watch.h"

#include <algorithm>
#include <execinfo.h>
#include <utility>

namespace Watch {

thread_local constinit Thread thread;

Scope::Scope(Counts &counts) { thread.counts = &counts; }

Scope::~Scope() { thread.counts = nullptr; }

void saw(const char *what, long number)
{
    Counts *const counts = std::exchange(thread.counts, nullptr);
    Sight sight = {what, number, {}, 0};
    sight.depth = backtrace(sight.frames.data(), static_cast<int>(sight.frames.size()));
    const auto end = counts->sights.begin() + counts->sightCount;
    const auto isSame = [&](const Sight &s) { return s.depth == sight.depth && s.frames == sight.frames; };
    if (end != counts->sights.end() && std::none_of(counts->sights.begin(), end, isSame))
        counts->sights[counts->sightCount++] = sight;
    thread.counts = counts;
}

} // namespace Watch
