#pragma once
#include <atomic>
#include <cstdint>
#include <thread>

#include "platform/System.h"

/// Faults that the watch has to find, each planted where it would be: a check that cannot fail is worth nothing.
/// Thread  construction before the audio thread is armed; run() on it
class Controls {
public:
    Controls();
    ~Controls();
    Controls(const Controls &) = delete;

    /// Plants each of them on the calling thread, and lets it do what is allowed. False, and says which, if the
    /// watch has missed one or found what is none.
    bool run();
    /// Faults planted by each run.
    static uint32_t plants();

private:
    bool findsTakenLock();
    void holdLock();

    Platform::RecursiveLock lock;
    std::atomic<bool> stopping = false, wanted = false; // the lock, by the holder
    std::atomic<uint32_t> taken = 0, left = 0;          // times that it has
    std::thread holder;
};
