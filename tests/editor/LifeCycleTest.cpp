#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/editor/Session.h"

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

Audio loudNoise(uint32_t frames = 4096) { return Signals::noise(1, frames, -3); }

/// Of the editor's tick: by a timer, or by a thread.
class EditorLifeCycle : public testing::TestWithParam<bool> {
protected:
    EditorLifeCycle()
    {
        hosted.close();
        hosted.effect.global().setRenderingThread(GetParam());
        hosted.open();
    }
    /// Whether the picture becomes another one; it has as long as a busy machine may need.
    bool changes(const std::vector<uint32_t> &before)
    {
        for (int i = 0; i < 100; ++i) {
            waitReally(desk, kTicks);
            if (desk.pixels() != before) return true;
        }
        return false;
    }
    HostedEffect hosted;
    Desk &desk = *hosted.desk;
};
INSTANTIATE_TEST_SUITE_P(Ticks, EditorLifeCycle, testing::Bool(),
                         [](const auto &made) { return made.param ? "ByThread" : "ByTimer"; });

TEST_P(EditorLifeCycle, SurvivesAHostThatDestroysItsWindowFirst)
{
    waitReally(desk, kTicks);
    desk.destroyWindow();
    hosted.play(loudNoise());
    hosted.effect.set(3, 0.7f);
    hosted.effect.dispatch(effEditIdle);
    waitReally(desk, kTicks);
    hosted.close();
    EXPECT_EQ(0, WindowBase::liveWindows());
    EXPECT_FALSE(hosted.open()) << "there is no window to open in";
    hosted.effect.dispatch(effEditIdle);
}

TEST_P(EditorLifeCycle, TicksWithoutTheHostsIdleAlsoWhenTheThreadIsSwitched)
{
    for (const bool byThread : {GetParam(), !GetParam(), GetParam()}) {
        hosted.effect.global().setRenderingThread(byThread);
        waitReally(desk, kTicks);
        const auto before = desk.pixels();
        hosted.play(Signals::noise(byThread, 8192, -3 - 9 * byThread));
        EXPECT_TRUE(changes(before)) << (byThread ? "thread" : "timer");
    }
}

TEST(Editors, GetEveryConnectionThatTheyNeed)
{
    const HostedEffect hosted;
    EXPECT_LT(0, WindowBase::liveWindows());
    EXPECT_EQ(0u, Object::refusedConnections());
}

TEST(Editors, LeaveNothingBehindHoweverOftenTheyOpen)
{
    HostedEffect hosted;
    hosted.close();
    bool byThread = false;
    const int openings = std::getenv("TESSARINE_LONG_TESTS") ? 125 : 6;
    ResourceUsage left = leastGrowth(
        openings,
        [&] {
            hosted.effect.global().setRenderingThread(byThread = !byThread);
            ASSERT_TRUE(hosted.open());
            hosted.play(loudNoise(512));
            hosted.tick();
            hosted.desk->click(controlTable().front().centre());
            hosted.close();
            hosted.host.takeCalls();
            ASSERT_EQ(0, WindowBase::liveWindows());
            ASSERT_EQ(0, FrameBase::liveFrames());
        },
        [&] { return hosted.desk->resourceUsage(); });
    // A heap takes its time to settle; the smallest of windows is more than that, and sanitizers find the rest.
    EXPECT_LT(left["heap"], 3000 + openings * 100);
    left.erase("heap");
    left.erase("memory");
    for (const auto &[what, growth] : left) EXPECT_LE(growth, 0) << what;
}

TEST(Editors, OpenAndCloseWhileSoundAndAutomationRun)
{
    HostedEffect hosted;
    hosted.close();
    std::jthread audio([&](const std::stop_token &ended) {
        const Audio sound = loudNoise(512);
        for (int i = 0; !ended.stop_requested(); ++i) {
            hosted.play(sound);
            hosted.effect.set(i % 39, static_cast<float>(i % 11) / 10);
            hosted.effect.dispatch(effEditIdle); // the wrong thread for that
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    for (int i = 0; i < 8; ++i) {
        hosted.effect.global().setRenderingThread(i % 2 == 1);
        EXPECT_TRUE(hosted.open());
        waitReally(*hosted.desk, 20);
        hosted.close();
        waitReally(*hosted.desk, 5);
    }
    audio.request_stop();
    audio.join();
    EXPECT_EQ(0, WindowBase::liveWindows());
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
