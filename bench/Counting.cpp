#include "bench/Counting.h"

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define RUNNING_ON_VALGRIND 0
#define CALLGRIND_TOGGLE_COLLECT
#define CALLGRIND_DUMP_STATS
#endif

namespace Bench {

bool Counting::isWatched() { return RUNNING_ON_VALGRIND; }
Counting::Counting() { CALLGRIND_TOGGLE_COLLECT; }
Counting::~Counting() { CALLGRIND_TOGGLE_COLLECT; }
void Counting::endPart() { CALLGRIND_DUMP_STATS; }

} // namespace Bench
