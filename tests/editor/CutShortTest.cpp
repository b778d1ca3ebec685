#include "tests/editor/Session.h"

// Gestures that something ends before the person does, on one control of each kind.

namespace {

using namespace Platform;
using UI::Native::WindowBase;

struct Place {
    const char *control;   // the one that shows the parameter
    bool onLine = false;   // on the crossover's line instead
    bool isButton = false; // its gesture is the release
};
void PrintTo(const Place &place, std::ostream *out)
{
    *out << place.control << (place.onLine ? ", its line" : "");
}

class CutShort : public testing::TestWithParam<Place> {
protected:
    CutShort()
    {
        session.put(30, 1.0f); // bands are linked
        session.put(15, -3.0f);
        session.told();
    }
    /// The host closes the editor from inside the effect's next call of that kind and each that follows.
    void closeAt(int32_t opcode)
    {
        session.host.onCall = [this, opcode, reached = false](int32_t called) mutable {
            reached |= called == opcode;
            if (reached) session.close();
        };
    }
    /// That the gestures are whole and the editor is closed; it is open again then.
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
INSTANTIATE_TEST_SUITE_P(On, CutShort,
                         testing::Values(Place{"output slider"}, Place{"output gain"}, Place{"gain 2"},
                                         Place{"mid cutoff"}, Place{"mid cutoff", true},
                                         Place{"solo 2", false, true}));

TEST_P(CutShort, GesturesEndOnceWhateverEndsThem)
{
    desk.answerPrompt("7", true); // nobody asks
    const std::string end = GetParam().isButton ? "" : "e" + std::to_string(row.host);
    for (const auto &[close, moved] : {std::pair(false, false), {false, true}, {true, true}}) {
        SCOPED_TRACE(testing::Message() << (close ? "closed" : "mouse lost") << (moved ? ", moved" : ""));
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

TEST_P(CutShort, GesturesMayBeClosedFromInsideAnyCall)
{
    for (const int32_t opcode : {audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit}) {
        SCOPED_TRACE(opcode);
        closeAt(opcode);
        desk.drag(at, at + Point{2, -5});
        expectClosed();
    }
    if (GetParam().onLine) return; // neither wheel nor keys
    session.window(row).setFocus();
    closeAt(audioMasterAutomate);
    desk.moveTo(at);
    if (GetParam().isButton || row.isSlider())
        desk.type(kKeyDown);
    else
        desk.wheel(120);
    expectClosed();
}

TEST(CutShort, NumbersMayBeTypedWhileTheEditorCloses)
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
        EXPECT_FALSE(session.desk->whilePrompted) << "no prompt came";
        EXPECT_EQ(0, WindowBase::liveWindows());
    }
}

} // namespace
