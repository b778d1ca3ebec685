#include "bench/Counting.h"

#ifdef BENCH_CALLGRIND
#include <valgrind/callgrind.h>
#else
#define RUNNING_ON_VALGRIND 0
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_TOGGLE_COLLECT
#define CALLGRIND_DUMP_STATS
#endif

namespace Bench {

bool Counting::isWatched() { return RUNNING_ON_VALGRIND; }

Counting::Counting()
{
    // Instrumentation starts with the first count, because the set-up before it takes most of a run.
    [[maybe_unused]] static const bool begun = [] {
        CALLGRIND_START_INSTRUMENTATION;
        return true;
    }();
    CALLGRIND_TOGGLE_COLLECT;
}

Counting::~Counting() { CALLGRIND_TOGGLE_COLLECT; }
void Counting::endPart() { CALLGRIND_DUMP_STATS; }

} // namespace Bench
