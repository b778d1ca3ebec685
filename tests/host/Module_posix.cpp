#include "tests/host/Module.h"

#include <dlfcn.h>

// CMakeLists.txt defines TESSARINE_MODULE.

const int64_t Module::kKeptPerLoad = 20;

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
