#pragma once
#include <cstdint>

#include "tests/host/FakeHost.h"

/// The shared library, loaded from its file. The destructor unloads it.
class Module {
public:
    Module();
    ~Module();
    Module(const Module &) = delete;

    /// Null for a name that is not exported.
    LoadedEffect::Entry entry(const char *name = "VSTPluginMain") const;
    /// Returns true if the library is loaded in this process.
    static bool isLoaded();

    /// Upper bound of the bytes that the system and the compiler's runtime leak per load.
    static const int64_t kKeptPerLoad;

private:
    void *handle;
};
