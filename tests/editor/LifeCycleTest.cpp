#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/editor/Session.h"

namespace {

using UI::Native::FrameBase;
using UI::Native::WindowBase;

constexpr uint32_t kThreeTicksMs = 120;

/// Waits in real time, so that the editor's thread can run.
void waitRealTime(Desk &desk, uint32_t ms)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    while (std::chrono::steady_clock::now() < end) {
        desk.wait(2);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

Audio loudNoise(uint32_t frames = 4096) { return Signals::noise(1, frames, -3); }

/// Parameter: true if a thread drives the editor's ticks, false for a timer.
class EditorLifeCycle : public testing::TestWithParam<bool> {
protected:
    EditorLifeCycle()
    {
        hosted.close();
        hosted.effect.global().setRenderingThread(GetParam());
        hosted.open();
    }
    /// Returns true as soon as the picture changes, false after 12 seconds.
    bool changes(const std::vector<uint32_t> &before)
    {
        for (int i = 0; i < 100; ++i) {
            waitRealTime(desk, kThreeTicksMs);
            if (desk.pixels() != before) return true;
        }
        return false;
    }
    HostedEffect hosted;
    Desk &desk = *hosted.desk;
};
INSTANTIATE_TEST_SUITE_P(Ticks, EditorLifeCycle, testing::Bool(),
                         [](const auto &made) { return made.param ? "ByThread" : "ByTimer"; });

TEST_P(EditorLifeCycle, SurvivesDestructionOfTheHostWindow)
{
    waitRealTime(desk, kThreeTicksMs);
    desk.destroyWindow();
    hosted.play(loudNoise());
    hosted.effect.set(3, 0.7f);
    hosted.effect.dispatch(effEditIdle);
    waitRealTime(desk, kThreeTicksMs);
    hosted.close();
    EXPECT_EQ(0, WindowBase::liveWindows());
    EXPECT_FALSE(hosted.open()) << "the host window is destroyed";
    hosted.effect.dispatch(effEditIdle);
}

TEST_P(EditorLifeCycle, TicksWithoutHostIdleAfterSwitchingTimerAndThread)
{
    for (const bool threaded : {GetParam(), !GetParam(), GetParam()}) {
        hosted.effect.global().setRenderingThread(threaded);
        waitRealTime(desk, kThreeTicksMs);
        const auto before = desk.pixels();
        hosted.play(Signals::noise(threaded, 8192, -3 - 9 * threaded));
        EXPECT_TRUE(changes(before)) << (threaded ? "thread" : "timer");
    }
}

TEST(Editors, MakeAllSignalConnections)
{
    const HostedEffect hosted;
    EXPECT_LT(0, WindowBase::liveWindows());
    EXPECT_EQ(0u, Object::refusedConnections());
}

TEST(Editors, LeaveNothingBehindAfterManyOpenings)
{
    HostedEffect hosted;
    hosted.close();
    bool threaded = false;
    const int openings = std::getenv("TESSARINE_LONG_TESTS") ? 125 : 6;
    ResourceUsage left = leastGrowth(
        openings,
        [&] {
            hosted.effect.global().setRenderingThread(threaded = !threaded);
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
    // The heap needs time to settle. Even the smallest leaked window exceeds this limit; sanitizers find smaller leaks.
    EXPECT_LT(left["heap"], 3000 + openings * 100);
    left.erase("heap");
    left.erase("memory");
    for (const auto &[what, growth] : left) EXPECT_LE(growth, 0) << what;
}

TEST(Editors, OpenAndCloseDuringAudioAndAutomation)
{
    HostedEffect hosted;
    hosted.close();
    std::jthread audio([&](const std::stop_token &ended) {
        const Audio sound = loudNoise(512);
        for (int i = 0; !ended.stop_requested(); ++i) {
            hosted.play(sound);
            hosted.effect.set(i % 39, static_cast<float>(i % 11) / 10);
            hosted.effect.dispatch(effEditIdle); // some hosts call it on the wrong thread
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    for (int i = 0; i < 8; ++i) {
        hosted.effect.global().setRenderingThread(i % 2 == 1);
        EXPECT_TRUE(hosted.open());
        waitRealTime(*hosted.desk, 20);
        hosted.close();
        waitRealTime(*hosted.desk, 5);
    }
    audio.request_stop();
    audio.join();
    EXPECT_EQ(0, WindowBase::liveWindows());
}

TEST(Editors, OfTwoEffectsAreIndependent)
{
    HostedEffect first;
    const LoadedEffect second;
    second.switchOn();
    ASSERT_EQ(1, second.dispatch(effEditOpen, 0, 0, first.desk->window()));
    const int32_t both = WindowBase::liveWindows();
    first.desk->wait(kThreeTicksMs);
    first.close();
    first.desk->wait(kThreeTicksMs);
    EXPECT_EQ(both, 2 * WindowBase::liveWindows());
    ASSERT_TRUE(first.open()) << "the window classes must stay registered";
    second.dispatch(effEditClose);
    first.play(loudNoise());
    first.desk->wait(kThreeTicksMs);
    EXPECT_EQ(both, 2 * WindowBase::liveWindows());
}

TEST(Editors, CloseWithTheirEffect)
{
    const auto desk = Desk::make();
    FakeHost host;
    {
        const LoadedEffect effect;
        ASSERT_EQ(1, effect.dispatch(effEditOpen, 0, 0, desk->window()));
        effect.set(3, 0.7f);
    }
    EXPECT_EQ(0, WindowBase::liveWindows());
    desk->wait(kThreeTicksMs);
}

} // namespace
