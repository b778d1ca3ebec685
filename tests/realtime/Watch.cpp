#include "tests/realtime/Watch.h"

#include <algorithm>
#include <execinfo.h>
#include <utility>

namespace Watch {

thread_local constinit Thread thread;

Scope::Scope(Counts &counts)
{
    thread.counts = &counts;
    thread.gate = Thread::kTrap;
}

Scope::~Scope()
{
    thread.gate = Thread::kLet;
    thread.counts = nullptr;
}

void saw(const char *what, long number)
{
    Counts *const counts = std::exchange(thread.counts, nullptr);
    const char gate = std::exchange(thread.gate, Thread::kLet);
    Sight sight = {what, number, {}, 0};
    sight.depth = backtrace(sight.frames.data(), static_cast<int>(sight.frames.size()));
    counts->see(sight);
    thread.gate = gate;
    thread.counts = counts;
}

void Counts::see(const Sight &sight)
{
    const auto end = sights.begin() + sightCount;
    const auto isSame = [&](const Sight &s) { return s.depth == sight.depth && s.frames == sight.frames; };
    if (end != sights.end() && std::none_of(sights.begin(), end, isSame)) sights[sightCount++] = sight;
}

void Counts::add(const Counts &other)
{
    for (uint64_t Counts::*each : {&Counts::allocations, &Counts::releases, &Counts::locks, &Counts::waits,
                                   &Counts::wakes, &Counts::callsOfLocks, &Counts::callsElsewhere})
        this->*each += other.*each;
    for (size_t i = 0; i < kCalls; ++i) {
        lockCalls[i] += other.lockCalls[i];
        otherCalls[i] += other.otherCalls[i];
    }
    for (uint32_t i = 0; i < other.sightCount; ++i) see(other.sights[i]);
}

} // namespace Watch
