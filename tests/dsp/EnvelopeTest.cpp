#include "dsp/automation/EnvelopeHandler.h"

#include <cmath>
#include <gtest/gtest.h>

#include "dsp/numerics/Conversions.h"
#include "dsp/stages/Gain.h"
#include "tests/dsp/Envelopes.h"
#include "tests/dsp/FakePlugin.h"

namespace {

using DSP::EnvelopeHandler;
using DSP::ParamKind;
using namespace Envelopes;

TEST(Envelope, IgnoresInvalidSegmentsAndHandlesExtremeTimes)
{
    constexpr uint32_t rate = 10000;
    EnvelopeHandler handler("Test", 1, 0, 0);
    const auto read = [&](int64_t time) {
        const int64_t sample = EnvelopeHandler::sampleAt(time, rate);
        const auto now = handler.valueAt<float>(0, sample, rate),
                   later = handler.valueAt<float>(0, sample + 50, rate);
        return std::pair(now.value_or(7), later.value_or(7));
    };
    const float nan = std::nanf(""), infinity = HUGE_VALF;
    handler.setEnvelope(ParamKind::real, 0,
                        {{0, 10, nan, 1, 0, 0}, {0, 10, 1, infinity, 0, 0}, {9, 8, 1, 1, 0, 0}});
    EXPECT_FALSE(handler.hasEnvelope(ParamKind::real, 0));
    EXPECT_EQ(read(0), std::pair(7.0f, 7.0f));

    handler.setEnvelope(ParamKind::real, 0, // unsorted
                        {{timeOf(300, rate), timeOf(350, rate), 1, 2, 0, 0},
                         {INT64_MIN, timeOf(50, rate), -1e38f, 3e38f, 0, 1},
                         {INT64_MAX - 1, INT64_MAX, 5, 6, 0, 0}});
    EXPECT_TRUE(handler.hasEnvelope(ParamKind::real, 0));
    EXPECT_EQ(read(0), std::pair(-1e38f, 3e38f));
    EXPECT_EQ(read(timeOf(200, rate)), std::pair(3e38f, 3e38f));
    EXPECT_EQ(read(timeOf(300, rate)), std::pair(1.0f, 2.0f));
    EXPECT_EQ(read(INT64_MAX), std::pair(2.0f, 2.0f));
}

TEST(Automation, WaitsUntilEnabledAndYieldsToTheUser)
{
    Rig<DSP::Gain> rig;
    bool moved = false;
    const auto firstAndLast = [&] {
        std::vector<float> left(120, 1.0f), right = left;
        moved = rig.run({120, left.data(), right.data()});
        return std::pair(left.front(), left.back());
    };
    const float loud = DSP::gainFactor(6), soft = DSP::gainFactor(-6);
    EnvelopeHandler &envelopes = rig->envelopeHandler();
    envelopes.setEnvelope(ParamKind::real, 0,
                          {{0, timeOf(100, 44100), 6, -6, 0, DSP::EnvelopeSegment::step}});
    EXPECT_EQ(firstAndLast(), std::pair(1.0f, 1.0f));
    envelopes.setEnabled(true);
    rig->setFloatParamEditing(0, true);
    EXPECT_EQ(firstAndLast(), std::pair(1.0f, 1.0f)) << "while the user edits";
    EXPECT_FALSE(moved);
    rig->setFloatParamEditing(0, false);
    EXPECT_EQ(firstAndLast(), std::pair(loud, soft));
    EXPECT_TRUE(moved);
    envelopes.setEnvelope(ParamKind::real, 0, {{timeOf(-10, 44100), timeOf(-5, 44100), 6, -6, 0, 0}});
    EXPECT_EQ(firstAndLast(), std::pair(soft, soft)) << "an ended envelope keeps its last value";
    EXPECT_FALSE(moved);
}

} // namespace
