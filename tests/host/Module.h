#pragma once
#include <cstdint>

#include "tests/host/FakeHost.h"

/// The library as it ships, loaded from its file and unloaded at the end. What differs between systems stands in
/// one source for each.
class Module {
public:
    Module();
    ~Module();
    Module(const Module &) = delete;

    /// Null for a name that is not exported.
    LoadedEffect::Entry entry(const char *name = "VSTPluginMain") const;
    /// Whether anything of it is in this process.
    static bool isLoaded();

    /// Most bytes that the system and the compiler's runtime keep of each load.
    static const int64_t kKeptOfALoad;

private:
    void *handle;
};
