#pragma once
namespace Bench {

/// Controls Callgrind, if it runs this process (with --instr-atstart=no --collect-atstart=no). Otherwise has
/// no effect and negligible cost.
class Counting {
public:
    /// True if Valgrind runs this process.
    static bool isWatched();
    /// Counts instructions during the object's lifetime.
    Counting();
    ~Counting();
    Counting(const Counting &) = delete;
    Counting &operator=(const Counting &) = delete;
    /// Writes the count since the previous call and restarts it at 0.
    static void endPart();
};

} // namespace Bench
