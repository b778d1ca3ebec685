#pragma once
#include <array>
#include <atomic>
#include <cstdint>
#include <vector>

#include "dsp/kernels/VectorOperations.h"

namespace DSP::Meter {

/// Wait-free triple buffer that passes whole spectra from one writer to one reader. One slot is being written, one
/// is being read, one contains the newest spectrum. A spectrum that is not fetched in time is overwritten.
class PublishedSpectrum {
public:
    explicit PublishedSpectrum(size_t mostMagnitudes)
    {
        for (Slot &slot : slots) slot.magnitudes.resize(mostMagnitudes);
    }

    /// Writer: one thread at a time.
    void publish(const float *magnitudes, uint32_t count)
    {
        Slot &slot = slots[writing];
        copySamples(magnitudes, slot.magnitudes.data(), count);
        slot.count = count;
        writing = newest.exchange(writing | kFresh, std::memory_order_acq_rel) & kSlotMask;
    }

    /// Reader: one thread at a time. Returns false if there is no new spectrum since the last call.
    bool fetch(float *destination, uint32_t &count)
    {
        if (!(newest.load(std::memory_order_relaxed) & kFresh)) return false;
        reading = newest.exchange(reading, std::memory_order_acq_rel) & kSlotMask;
        const Slot &slot = slots[reading];
        count = slot.count;
        copySamples(slot.magnitudes.data(), destination, count);
        return true;
    }

private:
    struct Slot {
        std::vector<float> magnitudes;
        uint32_t count = 0;
    };
    static constexpr uint32_t kSlotMask = 3, kFresh = 4;

    std::array<Slot, 3> slots;
    uint32_t writing = 0, reading = 1;
    std::atomic<uint32_t> newest = 2;
};

} // namespace DSP::Meter
