#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/editor/HostedEffect.h"

namespace {

using UI::Native::FrameBase;
using UI::Native::WindowBase;

constexpr uint32_t kTicks = 120; // ms, time for three ticks

/// Time of the clock on the wall, for what a thread of the editor's does.
void waitReally(Desk &desk, uint32_t ms)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    while (std::chrono::steady_clock::now() < end) {
        desk.wait(2);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

std::vector<uint32_t> pixels(Desk &desk)
{
    const Platform::Bitmap shot = desk.shot();
    const auto *first = static_cast<const uint32_t *>(shot.pixels());
    return std::vector<uint32_t>(first, first + shot.width() * shot.height());
}

Audio loudNoise(uint32_t frames = 4096) { return Signals::noise(1, frames, -3); }

/// Of the editor's tick: by a timer, or by a thread.
class EditorLifeCycle : public testing::TestWithParam<bool> {
protected:
    EditorLifeCycle() { hosted.effect.global().setRenderingThread(GetParam()); }
    HostedEffect hosted;
};
INSTANTIATE_TEST_SUITE_P(Ticks, EditorLifeCycle, testing::Bool(),
                         [](const auto &made) { return made.param ? "ByThread" : "ByTimer"; });

TEST_P(EditorLifeCycle, LeavesNothingBehindHoweverOftenItOpens)
{
    Desk &desk = *hosted.desk;
    const auto use = [&] {
        ASSERT_TRUE(hosted.open());
        hosted.play(loudNoise(512));
        hosted.tick();
        desk.click(hosted.centre(*hosted.controls().front()));
        hosted.close();
        hosted.host.takeCalls();
        ASSERT_EQ(0, WindowBase::liveWindows());
        ASSERT_EQ(0, FrameBase::liveFrames());
    };
    hosted.close();
    for (int i = 0; i < 20; ++i) use(); // what the system and the images' table set up once
    const DeskHoldings before = desk.holdings();
    const int openings = std::getenv("TESSARINE_LONG_TESTS") ? 500 : 50;
    for (int i = 0; i < openings; ++i) use();
    const DeskHoldings after = desk.holdings();

    const auto report = [&](const char *what, int64_t first, int64_t last) {
        RecordProperty(what, std::to_string(first) + " to " + std::to_string(last));
        return last;
    };
    EXPECT_EQ(before.windows, report("windows", before.windows, after.windows));
    EXPECT_EQ(before.timers, report("timers", before.timers, after.timers));
    EXPECT_EQ(before.graphics, report("graphics", before.graphics, after.graphics));
    EXPECT_EQ(before.threads, report("threads", before.threads, after.threads));
    EXPECT_EQ(before.handles, report("handles", before.handles, after.handles));
    // A heap takes its time to settle; the smallest of windows is more than that, and sanitizers find the rest.
    EXPECT_LT(report("heap", before.heapBytes, after.heapBytes), before.heapBytes + openings * 200);
}

TEST_P(EditorLifeCycle, MovesItsMetersWithoutTheHostsIdle)
{
    hosted.close();
    ASSERT_TRUE(hosted.open());
    waitReally(*hosted.desk, kTicks);
    const auto silent = pixels(*hosted.desk);
    hosted.play(loudNoise());
    waitReally(*hosted.desk, kTicks);
    EXPECT_NE(silent, pixels(*hosted.desk));
}

TEST_P(EditorLifeCycle, SurvivesAHostThatDestroysItsWindowFirst)
{
    hosted.close();
    ASSERT_TRUE(hosted.open());
    waitReally(*hosted.desk, kTicks);
    hosted.desk->destroyWindow();
    hosted.play(loudNoise());
    hosted.effect.set(3, 0.7f);
    hosted.effect.dispatch(effEditIdle);
    waitReally(*hosted.desk, kTicks);
    hosted.close();
    EXPECT_EQ(0, WindowBase::liveWindows());
    EXPECT_FALSE(hosted.open()) << "there is no window to open in";
    hosted.effect.dispatch(effEditIdle);
}

TEST_P(EditorLifeCycle, TicksOnWhenTheThreadIsSwitchedWhileItIsOpen)
{
    hosted.close();
    ASSERT_TRUE(hosted.open());
    bool byThread = GetParam();
    for (int i = 0; i < 4; ++i) {
        byThread = !byThread;
        hosted.effect.global().setRenderingThread(byThread);
        waitReally(*hosted.desk, kTicks);
        const auto before = pixels(*hosted.desk);
        hosted.play(Signals::noise(static_cast<uint64_t>(i), 8192, -3 * i));
        waitReally(*hosted.desk, kTicks);
        EXPECT_NE(before, pixels(*hosted.desk)) << (byThread ? "thread" : "timer");
    }
}

TEST_P(EditorLifeCycle, OpensAndClosesWhileSoundAndAutomationRun)
{
    hosted.close();
    std::atomic<bool> ended = false;
    std::thread audio([&] {
        const Audio sound = loudNoise(512);
        for (int i = 0; !ended; ++i) {
            hosted.play(sound);
            hosted.effect.set(i % 39, static_cast<float>(i % 11) / 10);
            hosted.effect.dispatch(effEditIdle); // the wrong thread for that
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(hosted.open());
        waitReally(*hosted.desk, 20);
        hosted.close();
        waitReally(*hosted.desk, 5);
    }
    ended = true;
    audio.join();
    EXPECT_EQ(0, WindowBase::liveWindows());
}

class ClosingHost : public testing::Test {
protected:
    /// The host closes the editor from inside the effect's next call of that kind.
    void closeAt(int32_t opcode)
    {
        hosted.host.onCall = [this, opcode](int32_t called) {
            if (called != opcode) return;
            hosted.host.onCall = {};
            hosted.close();
        };
    }
    void expectClosed()
    {
        EXPECT_FALSE(hosted.isOpen());
        EXPECT_EQ(0, WindowBase::liveWindows());
        EXPECT_EQ(0, FrameBase::liveFrames());
        ASSERT_TRUE(hosted.open());
    }
    HostedEffect hosted;
};

TEST_F(ClosingHost, EndsAnyGestureInOrder)
{
    hosted.host.onCall = {};
    for (const int32_t opcode : {audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit})
        for (size_t i = 0; i < hosted.controls().size(); ++i) {
            SCOPED_TRACE(std::to_string(opcode) + " at " + hosted.controls()[i]->objectName().c_str());
            const Point at = hosted.centre(*hosted.controls()[i]);
            closeAt(opcode);
            hosted.desk->drag(at, at + Point{3, -5});
            if (!hosted.isOpen())
                expectClosed();
            else
                hosted.host.onCall = {}; // that control makes no such call
        }
}

TEST_F(ClosingHost, EndsAChangeByWheelOrKeyInOrder)
{
    for (size_t i = 0; i < hosted.controls().size(); ++i) {
        SCOPED_TRACE(hosted.controls()[i]->objectName().c_str());
        const Point at = hosted.centre(*hosted.controls()[i]);
        hosted.controls()[i]->setFocus();
        closeAt(audioMasterAutomate);
        hosted.desk->moveTo(at);
        hosted.desk->wheel(120);
        if (!hosted.isOpen()) expectClosed();
        hosted.controls()[i]->setFocus();
        closeAt(audioMasterAutomate);
        hosted.desk->type(Platform::kKeyPageDown);
        hosted.desk->type(Platform::kKeySpace);
        if (!hosted.isOpen()) expectClosed();
    }
}

TEST_F(ClosingHost, MayCloseWhileANumberIsTyped)
{
    for (const bool confirm : {true, false})
        for (const bool destroy : {false, true}) {
            SCOPED_TRACE(destroy);
            hosted.desk->whilePrompted = [&] {
                hosted.close();
                if (destroy) hosted.desk->destroyWindow();
            };
            hosted.desk->answerPrompt("3", confirm);
            hosted.desk->click(hosted.centre(*hosted.controls()[1]));
            hosted.desk->wait(50);
            EXPECT_FALSE(hosted.desk->whilePrompted) << "no prompt came";
            EXPECT_EQ(0, WindowBase::liveWindows());
            if (destroy) return;
            ASSERT_TRUE(hosted.open());
        }
}

TEST(Editors, OfTwoEffectsStandSideBySide)
{
    HostedEffect first;
    const LoadedEffect second;
    second.switchOn();
    ASSERT_EQ(1, second.dispatch(effEditOpen, 0, 0, first.desk->window()));
    const int32_t both = WindowBase::liveWindows();
    first.desk->wait(kTicks);
    first.close();
    first.desk->wait(kTicks);
    EXPECT_EQ(both, 2 * WindowBase::liveWindows());
    ASSERT_TRUE(first.open()) << "the other keeps the classes of its windows";
    second.dispatch(effEditClose);
    first.play(loudNoise());
    first.desk->wait(kTicks);
    EXPECT_EQ(both, 2 * WindowBase::liveWindows());
}

TEST(Editors, GoWithAnEffectThatIsClosedFirst)
{
    const auto desk = Desk::make();
    FakeHost host;
    {
        const LoadedEffect effect;
        ASSERT_EQ(1, effect.dispatch(effEditOpen, 0, 0, desk->window()));
        effect.set(3, 0.7f);
    }
    EXPECT_EQ(0, WindowBase::liveWindows());
    desk->wait(kTicks);
}

} // namespace
