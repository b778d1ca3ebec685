#include <gtest/gtest.h>

#include "tests/dsp/Envelopes.h"
#include "tests/host/AllocationCount.h"
#include "tests/plugin/TestPlugin.h"
#include "tests/signals/Blocks.h"

namespace {

using Signals::Random;

TEST(Allocation, HappensInTheFirstBlockOnly)
{
    constexpr uint32_t largest = 4096;
    for (uint32_t rate : {44100u, 192000u}) {
        Random random(rate);
        TestPlugin plugin({}, rate);
        for (DSP::Component *component : plugin.componentList()) {
            for (uint32_t i = 0; i < component->numFloatParams(); ++i) {
                const auto [low, high] = component->floatParamRange(i);
                const auto segments = Envelopes::drawSegments(random, rate, low, high);
                component->envelopeHandler().setEnvelope(DSP::ParamKind::real, i,
                                                         Envelopes::toEnvelope(segments));
            }
            component->envelopeHandler().setEnabled(true);
        }
        uint32_t position = 0;
        const Audio audio = Signals::noise(1, largest, 0);
        Audio input = audio, output = audio;
        const auto run = [&](uint32_t frames) {
            std::copy_n(audio.left.begin(), frames, input.left.begin());
            std::copy_n(audio.right.begin(), frames, input.right.begin());
            plugin.setStreamTime(Envelopes::timeOf(position, rate));
            position = (position + frames) % Envelopes::kFrames;
            plugin.transform(frames, input.left.data(), input.right.data(), output.left.data(),
                             output.right.data());
        };
        run(largest);
        run(largest); // fills the first frames of the spectra
        std::vector<float> magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
        const uint64_t before = allocationCount();
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
        EXPECT_EQ(allocationCount() - before, 0u) << rate;
    }
}

} // namespace
