#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <numbers>

#include "dsp/CrossOver.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/reference/BandSum.h"
#include "tests/reference/Settings.h"
#include "tests/signals/Blocks.h"

namespace {

using Complex = std::complex<double>;
using Signals::Random;

/// Response of the bands' sum as the component gives it: the transform of its answer to an impulse, at one
/// frequency.
class MeasuredSum {
public:
    MeasuredSum(const float (&cutoffs)[3], uint32_t rate) : answer(1u << 17)
    {
        Rig<DSP::CrossOver> rig;
        for (uint32_t i = 0; i < 3; ++i) rig->setCutoff(i, cutoffs[i]);
        rig.resume(rate);
        std::vector<float> input(answer.size()), bands[4];
        input[0] = 1;
        float *pointers[4];
        for (int b = 0; b < 4; ++b) {
            bands[b].resize(input.size());
            pointers[b] = bands[b].data();
        }
        rig.run(static_cast<uint32_t>(input.size()), input.data(), nullptr, pointers);
        for (const auto &band : bands)
            for (size_t i = 0; i < answer.size(); ++i) answer[i] += band[i];
    }
    Complex at(double turnsPerSample) const
    {
        const Complex back = std::polar(1.0, -2 * std::numbers::pi * turnsPerSample);
        Complex sum = 0;
        for (size_t i = answer.size(); i-- > 0;) sum = sum * back + answer[i];
        return sum;
    }

private:
    std::vector<double> answer;
};

void expectDesign(const float (&cutoffs)[3], uint32_t rate)
{
    SCOPED_TRACE(testing::Message() << cutoffs[0] << ", " << cutoffs[1] << ", " << cutoffs[2] << " Hz at "
                                    << rate);
    const MeasuredSum measured(cutoffs, rate);
    const Reference::BandSum design(cutoffs, rate);
    for (double hz = 10; hz < 0.499 * rate; hz *= 1.19) {
        const double expected = std::abs(design.at(hz)), actual = std::abs(measured.at(hz / rate));
        // where the bands cancel each other, what is left is small against each of them
        if (expected < 1e-2 * design.loudest(hz))
            EXPECT_NEAR(actual, expected, 1e-5 * design.loudest(hz)) << hz << " Hz";
        else
            EXPECT_NEAR(20 * std::log10(actual / expected), 0, 0.001) << hz << " Hz";
    }
}

TEST(BandSumResponse, IsTheDesignsAtEveryRate)
{
    for (uint32_t rate : {8000u, 11025u, 16000u, 22050u, 44100u, 48000u, 88200u, 96000u, 192000u}) {
        expectDesign({120, 2000, 10000}, rate);
        expectDesign({20, 20, 20}, rate);
        expectDesign({20, 20000, 20000}, rate);
        expectDesign({300, 450, 700}, rate);
    }
}

TEST(BandSumResponse, IsTheDesignsAtDrawnCutoffs)
{
    for (int seed = 0; seed < 60; ++seed) {
        Random random(seed);
        const uint32_t rate = drawRate(random);
        float cutoffs[3];
        Reference::drawCutoffs(random, cutoffs);
        std::sort(cutoffs, cutoffs + 3);
        expectDesign(cutoffs, rate);
    }
}

TEST(BandSumResponse, RipplesAtTheDefaultsAsItAlwaysDid)
{
    const Reference::BandSum design({120, 2000, 10000}, 44100);
    double least = 100, most = -100;
    for (double hz = 20; hz < 20000; hz *= 1.002) {
        const double db = 20 * std::log10(std::abs(design.at(hz)));
        least = std::min(least, db);
        most = std::max(most, db);
    }
    EXPECT_NEAR(least, -0.26, 0.01);
    EXPECT_NEAR(most, 0.09, 0.01);
}

} // namespace
