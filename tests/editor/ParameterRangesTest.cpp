#include "tests/editor/Session.h"

// Each slider and field shows and reaches both ends of its parameter's range, stays inside it, and steps from either
// end by the right amount.

namespace {

using namespace Platform;

class ParameterRanges : public testing::Test {
protected:
    /// Value after `notches` of the wheel. Cutoffs and band releases have logarithmic scales.
    static float stepped(const ControlRow &row, float from, float notches)
    {
        const float units = notches * 0.0265252f;
        if (row.isCutoff()) return from * std::pow(1000.0f, units / 37.7f);
        if (row.isBandRelease()) return (from + 1.0f) * std::pow(5001.0f, units / 100.0f) - 1.0f;
        return from + notches;
    }
    void expectValue(const ControlRow &row, float wanted)
    {
        EXPECT_NEAR(session.value(row.host), wanted, 2e-5f * std::max(1.0f, std::abs(wanted)));
        const String number = String::number(wanted, std::abs(wanted) < 100.0f ? 1 : 0);
        EXPECT_TRUE(row.isField() ? session.showsField(row, number.c_str()) : session.showsValue(row));
    }
    void checkEnds(const ControlRow &row, float low, float high)
    {
        for (const auto &[end, other, key, typed, sign] :
             {std::tuple{low, high, kKeyHome, "-999999", 1}, {high, low, kKeyEnd, "999999", -1}}) {
            SCOPED_TRACE(row.name + " " + typed);
            session.put(row.host, end); // as the host does
            expectValue(row, end);
            desk.moveTo(row.centre());
            desk.wheel(-120 * sign);
            expectValue(row, end);
            session.takeEdits();
            desk.wheel(120 * sign);
            EXPECT_EQ(session.takeEdits().size(), 3u) << "one gesture of one value";
            expectValue(row, stepped(row, end, static_cast<float>(sign)));
            session.put(row.host, other);
            session.window(row).setFocus();
            desk.type(key);
            expectValue(row, end);
            if (!row.isField() || session.value(9) > 0.5f)
                continue; // brickwall mode limits the display, not the typed value
            session.put(row.host, other);
            desk.answerPrompt(typed, true);
            desk.click(row.centre());
            expectValue(row, end);
        }
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(ParameterRanges, AreReachedByEverySliderAndField)
{
    session.host.echoesAutomation = true;                             // the echo must not cause another edit
    const float gap = std::exp2(10.0f / 377.0f * std::log2(1000.0f)); // ten columns between two cutoffs
    for (const ControlRow &row : controlTable()) {
        if (row.isButton()) continue;
        for (int32_t cutoff = 1; cutoff <= 3; ++cutoff)
            session.put(cutoff, cutoff < row.host ? 20.0f : 20000.0f);
        const DSP::FloatRange range = session.range(row.host);
        checkEnds(row, row.isCutoff() && row.host > 1 ? range.minimum * gap : range.minimum,
                  row.isCutoff() && row.host < 3 ? range.maximum / gap : range.maximum);
    }
    session.put(9, 1.0f); // brickwall mode
    checkEnds(control("limiter attack"), 1.0f, 5.0f);
}

} // namespace
