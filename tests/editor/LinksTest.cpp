#include "tests/editor/Session.h"

// Gestures on a band while the bands are linked by the box or by keys.

namespace {

using namespace Platform;

class Links : public testing::Test {
protected:
    void expectValues(int32_t first, float wanted)
    {
        for (int32_t host = first; host < first + 4; ++host) EXPECT_FLOAT_EQ(session.value(host), wanted);
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(Links, BandsMoveTogether)
{
    for (const char *kind : {"threshold slider", "threshold", "gain", "ratio", "attack", "release"}) {
        SCOPED_TRACE(kind);
        const ControlRow &row = control(std::string(kind) + " 2");
        const int32_t first = row.host - 1;
        const float shares[] = {0.4f, 0.4f, 1.0f, 0.5f}; // the third is at its maximum
        float before[4];
        for (int32_t band = 0; band < 4; ++band) {
            session.effect.set(first + band, shares[band]);
            before[band] = session.value(first + band);
        }
        desk.moveTo(row.centre());
        session.told();
        {
            const Held keys(desk, {kKeyAlt, kKeyShift});
            desk.wheel(120);
        }
        EXPECT_EQ(session.told(), bracketed(first, 4));
        const float moved = session.value(row.host) - before[1], most = session.range(first).maximum;
        EXPECT_GT(moved, 0.0f);
        for (const int32_t band : {0, 2, 3})
            EXPECT_NEAR(session.value(first + band), std::min(before[band] + moved, most), 1e-3f) << band;
    }
}

TEST_F(Links, TypedNumbersAndResetsApplyToAllBands)
{
    session.put(30, 1.0f);
    session.told();
    desk.answerPrompt("4.5", true);
    desk.click(control("gain 3").centre());
    EXPECT_EQ(session.told(), "b16 e16 " + bracketed(14, 4));
    expectValues(14, 4.5f);
    session.put(30, 0.0f);
    session.told();
    desk.click(control("gain 1").centre(), {kKeyAlt, kKeyShift, kKeyControl}); // linked reset
    EXPECT_EQ(session.told(), bracketed(14, 4));
    expectValues(14, 0.0f);
}

TEST_F(Links, LinkKeysTakeEffectDuringAGesture)
{
    const ControlRow &row = control("gain 2");
    desk.moveTo(row.centre());
    desk.press();
    desk.moveTo(row.centre() + Point{0, -10});
    {
        const Held keys(desk, {kKeyAlt, kKeyShift});
        desk.wheel(120);
    }
    desk.release();
    // The dragged band has an open gesture; the others begin and end one for each step.
    EXPECT_EQ(session.told(), "b15 v15 b14 v14 e14 v15 b16 v16 e16 b17 v17 e17 e15");
    EXPECT_NEAR(session.value(15), 2.0f, 1e-4f);
    EXPECT_NEAR(session.value(17), 1.0f, 1e-4f);
}

TEST_F(Links, LinkBoxFollowsTheKeys)
{
    const ControlRow &box = control("band link");
    desk.wait(40);
    session.put(30, 1.0f); // the box is on before the keys are pressed
    session.told();
    {
        const Held keys(desk, {kKeyAlt, kKeyShift});
        desk.wait(80);
        EXPECT_EQ(session.told(), bracketed(30));
        EXPECT_TRUE(session.showsButton(box, true));
    }
    desk.wait(80);
    EXPECT_EQ(session.told(), bracketed(30));
    EXPECT_FLOAT_EQ(session.value(30), 0.0f);
    EXPECT_TRUE(session.showsButton(box, false));
}

} // namespace
