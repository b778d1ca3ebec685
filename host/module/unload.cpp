// The library is linked statically with the C++ runtime, which reserves memory for exceptions on loading and never
// frees it. A host that loads and unloads the library would lose 73 KB each time. Only for static linking: a shared
// runtime's reserve belongs to the whole process.

namespace __gnu_cxx {
void __freeres();
}

namespace {

constexpr int kLast = 101; // lowest priority that programs may use: runs after all objects are destroyed

[[gnu::destructor(kLast)]] void giveBackExceptionMemory() { __gnu_cxx::__freeres(); }

} // namespace
