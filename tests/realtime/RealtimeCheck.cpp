#include "tests/realtime/RealtimeCheck.h"

#include <algorithm>
#include <execinfo.h>
#include <utility>

namespace RealtimeCheck {

thread_local constinit Thread thread;

Scope::Scope(Counts &counts) { thread.counts = &counts; }

Scope::~Scope() { thread.counts = nullptr; }

void recordFinding(const char *what, long number)
{
    Counts *const counts = std::exchange(thread.counts, nullptr);
    Finding finding = {what, number, {}, 0};
    finding.depth = backtrace(finding.frames.data(), static_cast<int>(finding.frames.size()));
    const auto end = counts->findings.begin() + counts->findingCount;
    const auto isSame = [&](const Finding &s) {
        return s.depth == finding.depth && s.frames == finding.frames;
    };
    if (end != counts->findings.end() && std::none_of(counts->findings.begin(), end, isSame))
        counts->findings[counts->findingCount++] = finding;
    thread.counts = counts;
}

} // namespace RealtimeCheck
