// The library carries a C++ runtime of its own. That sets memory aside for exceptions when it is loaded, and has no
// destructor that gives it back: a host that loads and unloads us would lose 73 KB each time. Only for a library that
// is linked so; with the system's runtime it would be the memory of all others.

namespace __gnu_cxx {
void __freeres();
}

namespace {

constexpr int kLast = 101; // the lowest number there is runs after the destructors of all objects

[[gnu::destructor(kLast)]] void giveBackExceptionMemory() { __gnu_cxx::__freeres(); }

} // namespace
