#include "tests/editor/Session.h"

// After each gesture and each change by the host, the editor must show the same pixels as after reopening.

namespace {

using namespace Platform;

class Repaint : public testing::Test {
protected:
    /// Pixels without focus mark and tool tip.
    std::vector<uint32_t> picture()
    {
        session.mainWindow().stopTicking();
        desk.moveTo({300, 482}); // on the background
        desk.wait(UI::MainWindow::kFocusShownMs);
        session.tick();
        desk.wait(0);
        return desk.pixels();
    }
    void expectFreshPicture()
    {
        const std::vector<uint32_t> shown = picture();
        session.close();
        ASSERT_TRUE(session.open());
        const std::vector<uint32_t> fresh = picture();
        const auto [stale, right] = std::ranges::mismatch(shown, fresh);
        const auto at = static_cast<int32_t>(stale - shown.begin());
        EXPECT_TRUE(stale == shown.end()) << at % VSTEditor::kWidth << ", " << at / VSTEditor::kWidth;
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(Repaint, FollowsEveryGesture)
{
    for (const ControlRow &row : controlTable()) {
        if (row.name.ends_with('2') || row.name.ends_with('3'))
            continue; // controls of all bands behave alike
        const Point at = row.centre();
        const auto linked = [&](auto act) {
            const Held keys(desk, {kKeyAlt, kKeyShift});
            act();
        };
        const std::function<void()> gestures[] = {[&] { desk.wheel(-240); },
                                                  [&] { linked([&] { desk.wheel(-360); }); },
                                                  [&] {
                                                      desk.drag(at, at + Point{2, row.isButton() ? 0 : 9});
                                                  }, // a click on a button
                                                  [&] { desk.click(at, {kKeyAlt}); },
                                                  [&] { desk.type(kKeyUp); },
                                                  [&] {
                                                      desk.press();
                                                      windowSystem().captureMouse(
                                                          desk.window()); // another window takes the mouse
                                                      windowSystem().releaseMouse();
                                                      desk.release();
                                                  }};
        for (const std::function<void()> &gesture : gestures) {
            SCOPED_TRACE(testing::Message() << row.name << ", gesture " << &gesture - gestures);
            session.window(row).setFocus();
            desk.moveTo(at);
            gesture();
            expectFreshPicture();
        }
    }
    for (const int32_t x : {14 + 98, 14 + 251, 14 + 338}) { // crossover lines
        desk.drag({x, 100}, {x + 7, 90});
        expectFreshPicture();
    }
    session.put(1, 3000.0f);
    session.put(2, 5000.0f);
    desk.click(control("mid cutoff").centre(), {kKeyAlt}); // the reset also moves the low cutoff
    expectFreshPicture();
}

TEST_F(Repaint, FollowsTheHost)
{
    for (const float share : {0.2f, 0.7f})
        for (int32_t host = 0; host < session.effect->numParams; ++host) {
            SCOPED_TRACE(host);
            session.effect.set(host, share);
            desk.wait(0);
            expectFreshPicture();
        }
}

TEST(RepaintOfSpectra, FollowsTheRate)
{
    std::vector<uint32_t> pictures[2];
    for (const bool isOpen : {false, true}) { // when the rate changes
        Session session;
        if (!isOpen) session.close();
        session.effect.setRate(22050);
        if (!isOpen) session.open();
        session.mainWindow().stopTicking();
        session.play(Signals::music(1, 22050, 20000, 3));
        session.desk->wait(UI::MainWindow::kMinRenderMs);
        session.tick();
        session.desk->wait(0);
        pictures[isOpen] = session.desk->pixels();
    }
    EXPECT_EQ(pictures[0], pictures[1]);
}

} // namespace
