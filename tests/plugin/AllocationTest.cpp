#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>

#include "tests/plugin/TestPlugin.h"
#include "tests/signals/Blocks.h"

namespace {
std::atomic<uint64_t> allocations = 0;

void *allocate(std::size_t bytes, std::size_t alignment)
{
    ++allocations;
    bytes = (bytes + alignment - 1) / alignment * alignment;
    void *const memory = std::aligned_alloc(alignment, bytes ? bytes : alignment);
    if (!memory) throw std::bad_alloc();
    return memory;
}
} // namespace

void *operator new(std::size_t bytes) { return allocate(bytes, alignof(std::max_align_t)); }
void *operator new(std::size_t bytes, std::align_val_t alignment)
{
    return allocate(bytes, static_cast<std::size_t>(alignment));
}
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }

namespace {

using Signals::Random;

TEST(Allocation, HappensInTheFirstBlockOnly)
{
    constexpr uint32_t largest = 4096;
    for (uint32_t rate : {44100u, 192000u}) {
        Random random(rate);
        TestPlugin plugin({}, rate);
        const Audio audio = Signals::noise(1, largest, 0);
        Audio input = audio, output = audio;
        const auto run = [&](uint32_t frames) {
            std::copy_n(audio.left.begin(), frames, input.left.begin());
            std::copy_n(audio.right.begin(), frames, input.right.begin());
            plugin.transform(frames, input.left.data(), input.right.data(), output.left.data(),
                             output.right.data());
        };
        run(largest);
        run(largest); // fills the first frames of the spectra
        std::vector<float> magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
        const uint64_t before = allocations;
        for (int block = 0; block < 300; ++block) {
            Reference::Settings settings = Reference::draw(random);
            for (auto &spectrum : settings.spectra) spectrum = {};
            plugin.apply(settings);
            run(1 + random.below(largest));
            uint32_t count = 0;
            plugin.transformHandle().spectrum(0)->readSpectrum(magnitudes.data(), count);
            plugin.transformHandle().dynamics()->readGainReduction(0);
        }
        plugin.suspend();
        plugin.resume(rate);
        run(largest);
        EXPECT_EQ(allocations - before, 0u) << rate;
    }
}

} // namespace
