#pragma once
#include <cstdint>

/// Calls of operator new, in any form, by any thread of this program so far.
uint64_t allocationCount();
