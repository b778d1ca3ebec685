#include "tests/editor/Session.h"

// Gestures that are interrupted before the user ends them, on one control of each kind.

namespace {

using namespace Platform;
using UI::Native::WindowBase;

struct Target {
    const char *control;
    bool onLine = false;   // use the crossover line of the same parameter instead
    bool isButton = false; // reports its gesture on release
};
void PrintTo(const Target &target, std::ostream *out)
{
    *out << target.control << (target.onLine ? ", its line" : "");
}

class Interruption : public testing::TestWithParam<Target> {
protected:
    Interruption()
    {
        session.put(30, 1.0f); // bands are linked
        session.put(15, -3.0f);
        session.told();
    }
    /// Closes the editor inside the next callback with `opcode`, and in every later callback.
    void closeAt(int32_t opcode)
    {
        session.host.onCall = [this, opcode, reached = false](int32_t called) mutable {
            reached |= called == opcode;
            if (reached) session.close();
        };
    }
    /// Expects complete gestures and a closed editor, then opens it again.
    void expectClosed()
    {
        EXPECT_FALSE(session.isOpen());
        session.host.onCall = {};
        EXPECT_EQ(0, WindowBase::liveWindows());
        EXPECT_EQ(0, UI::Native::FrameBase::liveFrames());
        EXPECT_TRUE(Session::areWhole(session.takeEdits()));
        for (int32_t host = 0; host < 39; ++host) EXPECT_FALSE(session.editing(host)) << host;
        session.open();
    }

    Session session;
    Desk &desk = *session.desk;
    const ControlRow &row = control(GetParam().control);
    const Point at = GetParam().onLine ? Point{14 + 251, 100} : row.centre();
};
INSTANTIATE_TEST_SUITE_P(On, Interruption,
                         testing::Values(Target{"output slider"}, Target{"output gain"}, Target{"gain 2"},
                                         Target{"mid cutoff"}, Target{"mid cutoff", true},
                                         Target{"solo 2", false, true}));

TEST_P(Interruption, EndsTheGestureExactlyOnce)
{
    desk.answerPrompt("7", true); // no prompt may appear
    const std::string end = GetParam().isButton ? "" : "e" + std::to_string(row.host);
    for (const auto &[close, moved] : {std::pair(false, false), {false, true}, {true, true}}) {
        SCOPED_TRACE(testing::Message() << (close ? "closed" : "capture lost") << (moved ? ", moved" : ""));
        const float before = session.value(row.host);
        desk.moveTo(at);
        desk.press();
        if (moved) desk.moveTo(at + Point{3, -4});
        session.told();
        if (close) closeAt(audioMasterEndEdit);
        close ? session.close() : windowSystem().captureMouse(desk.window());
        desk.wait(0);
        windowSystem().releaseMouse();
        desk.release();
        EXPECT_EQ(session.told(), end);
        if (GetParam().isButton) {
            EXPECT_FLOAT_EQ(session.value(row.host), before);
        }
        if (close) expectClosed();
    }
}

TEST_P(Interruption, EditorMayCloseInsideAnyCallback)
{
    for (const int32_t opcode : {audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit}) {
        SCOPED_TRACE(opcode);
        closeAt(opcode);
        desk.drag(at, at + Point{2, -5});
        expectClosed();
    }
    if (GetParam().onLine) return; // lines ignore wheel and keys
    session.window(row).setFocus();
    closeAt(audioMasterAutomate);
    desk.moveTo(at);
    if (GetParam().isButton || row.isSlider())
        desk.type(kKeyDown);
    else
        desk.wheel(120);
    expectClosed();
}

TEST(Interruption, EditorMayCloseDuringAPrompt)
{
    Session session;
    for (const auto &[confirm, destroy] : {std::pair(true, false), {false, false}, {false, true}}) {
        ASSERT_TRUE(session.isOpen() || session.open());
        session.desk->whilePrompted = [&session, goes = destroy] {
            session.close();
            if (goes) session.desk->destroyWindow();
        };
        session.desk->answerPrompt("3", confirm);
        session.desk->click(control("output gain").centre());
        session.desk->wait(50);
        EXPECT_FALSE(session.desk->whilePrompted) << "no prompt appeared";
        EXPECT_EQ(0, WindowBase::liveWindows());
    }
}

} // namespace
