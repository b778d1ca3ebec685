#include "tests/host/Module.h"

#include <windows.h>

static constexpr char kFile[] = "tessarine.dll"; // Windows searches the program's folder first

// The compiler's thread library never frees its record of the loading thread or its first locks.
const int64_t Module::kKeptPerLoad = 1500;

Module::Module() : handle(LoadLibraryA(kFile)) {}

Module::~Module()
{
    if (handle) FreeLibrary(static_cast<HMODULE>(handle));
}

LoadedEffect::Entry Module::entry(const char *name) const
{
    FARPROC const found = handle ? GetProcAddress(static_cast<HMODULE>(handle), name) : nullptr;
    return reinterpret_cast<LoadedEffect::Entry>(reinterpret_cast<void *>(found));
}

bool Module::isLoaded() { return GetModuleHandleA(kFile) != nullptr; }
