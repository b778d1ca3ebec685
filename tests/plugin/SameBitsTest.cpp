#include <bit>
#include <gtest/gtest.h>

#include "dsp/kernels/Kernels.h"
#include "tests/host/FloatEnvironment.h"
#include "tests/plugin/TestPlugin.h"
#include "tests/signals/Signals.h"

// Every build and every instruction-set variant must give the same output bits. If a hash differs, the test prints the
// new one. Changing a hash means changing the sound: explain it in the commit.

namespace {

using Signals::Random;

/// Adds samples to a 64-bit FNV-1a hash.
void addToHash(uint64_t &hash, const std::vector<float> &samples)
{
    for (float sample : samples) hash = (hash ^ std::bit_cast<uint32_t>(sample)) * 0x100000001B3ull;
}

Reference::Settings drawSimpleSettings(Random &random)
{
    constexpr float cutoffs[][3] = {
        {120, 2000, 10000}, {50, 400, 3200}, {900, 1000, 1100}, {200, 200, 15000}};
    Reference::Settings settings;
    std::copy_n(random.pick(cutoffs), 3, settings.cutoffs);
    for (auto &band : settings.bands)
        band = {random.real(-50, -10), random.real(-6, 12), random.real(1, 12), random.real(0, 40),
                random.real(5, 400),   random.chance(0.1),  random.chance(0.1)};
    settings.maximizer = {
        random.real(-12, 0), random.real(-3, 0), random.real(1, 20), random.real(10, 300), false,
        random.chance(0.5)};
    settings.gainDb = random.real(-6, 6);
    return settings;
}

uint64_t hashOf(uint32_t seed, const FloatEnvironment &environment)
{
    constexpr uint32_t rates[] = {8000, 44100, 48000, 96000};
    Random random(seed);
    const uint32_t rate = random.pick(rates), frames = 30000;
    TestPlugin plugin(drawSimpleSettings(random), rate);
    const Audio audio = seed % 3 == 0   ? Signals::noise(seed, frames, 0)
                        : seed % 3 == 1 ? Signals::music(seed, rate, frames, -3)
                                        : Signals::bursts(seed, rate, frames, 6);
    const uint32_t block = random.chance(0.5) ? 64 : 441;
    uint64_t hash = 0xCBF29CE484222325ull;
    Audio output;
    {
        const InFloatEnvironment hosts(environment);
        output = plugin.process(audio, block);
        EXPECT_TRUE(hosts.isUntouched());
    }
    addToHash(hash, output.left);
    addToHash(hash, output.right);
    std::vector<float> magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
    for (uint32_t band = 0; band < 4; ++band) {
        uint32_t count = 0;
        plugin.transformHandle().spectrum(band)->readSpectrum(magnitudes.data(), count);
        addToHash(hash, magnitudes);
        addToHash(hash, {plugin.transformHandle().dynamics()->readGainReduction(band)});
    }
    return hash;
}

constexpr uint64_t kHashes[] = {
    0x5BFD2A19026321AE, 0x1BFAB917BECEEC78, 0x1FA12E9307FEB6BE, 0xC84561FA187DE69B,
    0xEAAC4C7EB6640868, 0x2BD0E3C59F154FB4, 0x706F6224D632BAC4, 0xC00862BD5DABAF02,
    0x7817403852124E5E, 0xB435F75DDA58FC64, 0x8B9EC2901B3DE0FD, 0x9ACC40931984E3F1,
};

TEST(SameBits, InEveryBuildVariantAndFloatEnvironment)
{
    for (uint32_t seed = 0; seed < std::size(kHashes); ++seed) {
        const FloatEnvironment &environment = kFloatEnvironments[seed % std::size(kFloatEnvironments)];
        const uint64_t hash = hashOf(seed, environment);
        char text[24];
        std::snprintf(text, sizeof text, "0x%016llX", static_cast<unsigned long long>(hash));
        EXPECT_EQ(kHashes[seed], hash)
            << text << " with the kernels " << DSP::Kernels::active().name << ", seed " << seed << ", "
            << environment.name << "; KernelVariants.AreBitExact names the kernel and the frame";
    }
}

} // namespace
