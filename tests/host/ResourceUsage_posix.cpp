#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

#include "tests/host/ResourceUsage.h"

ResourceUsage processUsage()
{
    const auto entries = [](const char *folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    const struct mallinfo2 heap = mallinfo2();
    int64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages; // the second value counts resident pages
    return {{"heap", static_cast<int64_t>(heap.uordblks + heap.hblkhd)},
            {"memory", pages * sysconf(_SC_PAGESIZE)},
            {"threads", entries("/proc/self/task")},
            {"handles", entries("/proc/self/fd")}};
}
