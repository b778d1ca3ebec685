#include "tests/editor/Session.h"

// Every slider and field against its parameter's range: both ends are shown, reached and kept, and a step from either
// end has the right size.

namespace {

using namespace Platform;

class ParameterRanges : public testing::Test {
protected:
    /// The number of a field: one decimal below 100.
    static std::string numberOf(float v) { return String::number(v, std::abs(v) < 100.0f ? 1 : 0).c_str(); }
    /// A notch of the wheel upwards (1) or downwards (-1); the cutoffs and the bands' releases have logarithmic scales.
    static float stepped(const ControlRow &row, float from, float notches)
    {
        const float units = notches * 0.0265252f;
        if (row.isCutoff()) return from * std::pow(1000.0f, units / 37.7f);
        if (row.isField() && row.isBandRelease())
            return (from + 1.0f) * std::pow(5001.0f, units / 100.0f) - 1.0f;
        return from + notches;
    }
    void expectValue(const ControlRow &row, float wanted)
    {
        EXPECT_NEAR(session.value(row.host), wanted, 2e-5f * std::max(1.0f, std::abs(wanted)));
        EXPECT_TRUE(row.isField() ? session.showsField(row, numberOf(wanted)) : session.showsValue(row));
    }
    void checkEnds(const ControlRow &row, float low, float high)
    {
        for (const auto &[end, other, key, sign] :
             {std::tuple{low, high, kKeyHome, 1.0f}, {high, low, kKeyEnd, -1.0f}}) {
            SCOPED_TRACE(end);
            session.put(row.host, end); // by the host
            expectValue(row, end);
            desk.moveTo(row.centre());
            desk.wheel(static_cast<int32_t>(-sign) * 120); // out of the range
            expectValue(row, end);
            session.takeEdits();
            desk.wheel(static_cast<int32_t>(sign) * 120);
            EXPECT_EQ(session.takeEdits().size(), 3u) << "one gesture of one value";
            expectValue(row, stepped(row, end, sign));
            session.put(row.host, other);
            session.window(row).setFocus();
            desk.type(key);
            expectValue(row, end);
            if (!row.isField()) continue;
            session.put(row.host, other);
            desk.answerPrompt(end == low ? "-999999" : "999999", true);
            desk.click(row.centre());
            EXPECT_TRUE(session.showsField(row, numberOf(end)));
            const DSP::FloatRange range = session.range(row.host);
            if (end == range.minimum || end == range.maximum) expectValue(row, end);
        }
        session.put(row.host, session.defaultValue(row.host));
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(ParameterRanges, AreReachedByEverySliderAndField)
{
    session.host.echoesAutomation =
        true; // sets each automated value at once, which must not start another round
    for (const ControlRow &row : controlTable()) {
        if (row.isButton()) continue;
        SCOPED_TRACE(row.name);
        const DSP::FloatRange range = session.range(row.host);
        float low = range.minimum, high = range.maximum;
        if (row.isCutoff()) // each ten pixels from the next, which the user cannot cross
            for (int32_t cutoff = 1; cutoff <= 3; ++cutoff)
                session.put(cutoff, cutoff < row.host ? 20.0f : 20000.0f);
        const float gap = std::exp2(10.0f / 377.0f * 9.9657843f);
        if (row.isCutoff() && row.host > 1) low *= gap;
        if (row.isCutoff() && row.host < 3) high /= gap;
        checkEnds(row, low, high);
    }
    session.put(9, 1.0f); // brickwall mode
    checkEnds(control("limiter attack"), 1.0f, 5.0f);
}

} // namespace
