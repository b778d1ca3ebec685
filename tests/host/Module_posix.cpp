#include "tests/host/Module.h"

#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

// TESSARINE_MODULE comes from the build.

const int64_t Module::kKeptOfALoad = 20;

Module::Module() : handle(dlopen(TESSARINE_MODULE, RTLD_NOW | RTLD_LOCAL)) {}

Module::~Module()
{
    if (handle) dlclose(handle);
}

LoadedEffect::Entry Module::entry(const char *name) const
{
    return handle ? reinterpret_cast<LoadedEffect::Entry>(dlsym(handle, name)) : nullptr;
}

bool Module::isLoaded()
{
    void *const loaded = dlopen(TESSARINE_MODULE, RTLD_NOW | RTLD_NOLOAD);
    if (loaded) dlclose(loaded);
    return loaded;
}

Holdings Holdings::now()
{
    const auto entries = [](const char *folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    const struct mallinfo2 heap = mallinfo2();
    int64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages; // the second number: those in memory
    return {static_cast<int64_t>(heap.uordblks + heap.hblkhd), pages * sysconf(_SC_PAGESIZE),
            entries("/proc/self/task"), entries("/proc/self/fd")};
}
