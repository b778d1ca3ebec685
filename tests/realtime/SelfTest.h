#pragma once
#include <atomic>
#include <cstdint>
#include <thread>

#include "platform/System.h"

/// Plants faults on the audio thread, to prove that the real-time check finds them.
/// Thread: construct before the audio thread calls arm(); run() on the audio thread
class SelfTest {
public:
    SelfTest();
    ~SelfTest();
    SelfTest(const SelfTest &) = delete;

    /// Plants each fault on the calling thread, and enters a free lock, which is allowed. Returns false and prints the
    /// case if the check misses a fault or reports the free lock.
    bool run();
    /// Number of faults planted by each run.
    static uint32_t plantedFaults();

private:
    bool findsTakenLock();
    void holdLock();

    Platform::RecursiveLock lock;
    std::atomic<bool> stopping = false;
    std::atomic<bool> wanted = false;          // asks the holder to enter the lock
    std::atomic<uint32_t> taken = 0, left = 0; // times that the holder has entered and left the lock
    std::thread holder;
};
