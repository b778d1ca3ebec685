#include "tests/editor/Session.h"

// The picture of an open editor never lags behind the parameters: after each gesture, and after each change that the
// host makes, the open editor shows the same pixels as one that is opened afresh.

namespace {

using namespace Platform;

class Repaint : public testing::Test {
protected:
    static constexpr Point kNowhere{300, 482}; // on the background

    /// Hides the focus mark and tool tips, then returns the picture.
    std::vector<uint32_t> settledPicture()
    {
        desk.moveTo(kNowhere);
        desk.wait(UI::MainWindow::kFocusShownMs);
        session.tick();
        desk.wait(0);
        return desk.pixels();
    }
    void expectFreshPicture()
    {
        session.mainWindow().stopTicking();
        const std::vector<uint32_t> shown = settledPicture();
        session.close();
        ASSERT_TRUE(session.open());
        session.mainWindow().stopTicking();
        const std::vector<uint32_t> fresh = settledPicture();
        const auto [a, b] = std::ranges::mismatch(shown, fresh);
        if (a == shown.end()) return;
        const auto at = static_cast<int32_t>(a - shown.begin());
        ADD_FAILURE() << "pixel " << at % VSTEditor::kWidth << ", " << at / VSTEditor::kWidth << " is stale";
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(Repaint, FollowsEveryGesture)
{
    struct Gesture {
        const char *name;
        bool ofButtons, ofOthers;
        std::initializer_list<uint32_t> held;
        void (*carryOut)(Desk &desk, Point at);
    };
    const auto click = [](Desk &desk, Point at) { desk.click(at); };
    const auto key = [](Desk &desk, Point) { desk.type(kKeyUp); };
    const Gesture gestures[] = {
        {"wheel", false, true, {}, [](Desk &desk, Point) { desk.wheel(-240); }},
        {"linked wheel", false, true, {kKeyAlt, kKeyShift}, [](Desk &desk, Point) { desk.wheel(-360); }},
        {"drag",
         false,
         true,
         {},
         [](Desk &desk, Point at) {
             desk.drag(at, at + Point{2, 9});
         }},
        {"click", true, false, {}, click},
        {"Alt-click", true, true, {kKeyAlt}, click},
        {"key", true, true, {}, key},
        {"key with Alt", true, false, {kKeyAlt}, key}};
    for (const ControlRow &row : controlTable()) {
        if (row.name.ends_with('2') || row.name.ends_with('3')) continue; // the bands' controls are alike
        for (const auto &[name, ofButtons, ofOthers, held, carryOut] : gestures) {
            if (!(row.isButton() ? ofButtons : ofOthers)) continue;
            SCOPED_TRACE(row.name + ", " + name);
            session.window(row).setFocus();
            desk.moveTo(row.centre());
            {
                const Held keys(desk, held);
                carryOut(desk, row.centre());
            }
            expectFreshPicture();
        }
    }
    for (const int32_t x : {14 + 98, 14 + 251, 14 + 338}) { // the cutoffs' lines
        SCOPED_TRACE(x);
        desk.drag({x, 100}, {x + 7, 90});
        expectFreshPicture();
    }
}

TEST_F(Repaint, FollowsTheHost)
{
    for (const bool back : {false, true})
        for (int32_t host = 0; host < session.effect->numParams; ++host) {
            SCOPED_TRACE(host);
            const float before = session.effect.get(host);
            session.effect.set(host, back || before > 0.5f ? 0.2f : 0.7f);
            desk.wait(0);
            expectFreshPicture();
        }
    const LoadedEffect::Bytes all = session.effect.chunk();
    session.close();
    ASSERT_TRUE(session.open());
    session.effect.load(all);
    desk.wait(0);
    expectFreshPicture();
    session.effect.switchOff();
    session.effect.setRate(22050);
    session.effect.switchOn();
    desk.wait(0);
    expectFreshPicture();
}

} // namespace
