#pragma once
namespace Bench {

/// Switches for the instruction counter that may be watching the process from outside (Callgrind, started
/// with --instr-atstart=no --collect-atstart=no). Without one they do nothing and cost next to nothing.
class Counting {
public:
    static bool isWatched();
    /// Counts while the object lives.
    Counting();
    ~Counting();
    Counting(const Counting &) = delete;
    Counting &operator=(const Counting &) = delete;
    /// Ends a part: writes what was counted since the last one, and counts on from 0.
    static void endPart();
};

} // namespace Bench
