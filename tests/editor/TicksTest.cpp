#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

#include "tests/editor/HostedEffect.h"
#include "tests/editor/OffscreenDesk.h"

// The editor's ticks, by a timer of the clock in memory or by a thread.

namespace {

class TicksTest : public testing::Test {
protected:
    OffscreenDesk &desk() { return static_cast<OffscreenDesk &>(*hosted.desk); }
    /// When the spectrum was drawn anew, ms, in as much time of the desk's.
    std::vector<uint32_t> tickTimes(uint32_t ms)
    {
        std::vector<uint32_t> times;
        for (uint32_t time = 0; time < ms; ++time) {
            desk().system.paints.clear();
            desk().wait(1);
            if (!desk().system.paints.empty()) times.push_back(time);
        }
        return times;
    }
    static void letThreadsRun() { std::this_thread::sleep_for(std::chrono::milliseconds(60)); }

    HostedEffect hosted;
    DSP::Global &settings = hosted.effect.global();
    UI::MainWindow &root = hosted.mainWindow();
};

TEST_F(TicksTest, ComeAtTheChosenRateButNeverTwiceIn30Milliseconds)
{
    for (const float fps : {60.0f, 47.0f, 34.0f, 30.0f, 20.0f, 5.0f}) {
        SCOPED_TRACE(fps);
        settings.setFps(fps);
        desk().wait(300);
        EXPECT_EQ(desk().system.timerCount(), 1u);
        const auto period = static_cast<uint32_t>(std::lround(1000.0f / fps));
        const uint32_t gap = (UI::MainWindow::kMinRenderMs + period - 1) / period * period; // whole ticks
        const std::vector<uint32_t> times = tickTimes(1000);
        EXPECT_NEAR(static_cast<double>(times.size()), 1000.0 / gap, 1.0);
        for (size_t i = 1; i < times.size(); ++i) EXPECT_EQ(times[i] - times[i - 1], gap);
    }
    root.stopTicking();
    settings.setFps(60);
    desk().wait(0);
    EXPECT_EQ(desk().system.timerCount(), 0u) << "a new rate starts nothing";
}

TEST_F(TicksTest, StandAnyRate)
{
    for (const bool threaded : {false, true}) {
        settings.setRenderingThread(threaded);
        for (const float fps : {0.0f, -1.0f, 1e-30f, 1e30f, std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity()}) {
            settings.setFps(fps);
            desk().wait(40);
        }
    }
}

TEST_F(TicksTest, StopWhileOneIsPendingWithoutWaitingForIt)
{
    settings.setRenderingThread(true);
    desk().wait(0);
    for (int round = 0; round < 4; ++round) {
        root.startTicking();
        letThreadsRun(); // a tick waits by now
        if (round == 3) hosted.desk->destroyWindow();
        root.stopTicking(); // or the test never ends
        EXPECT_FALSE(root.isTicking());
    }
}

/// Some hosts do so when keys that the tick notices tick the link box.
TEST_F(TicksTest, MayCloseTheEditorFromInsideOne)
{
    for (const bool threaded : {false, true}) {
        settings.setRenderingThread(threaded);
        desk().wait(0);
        hosted.host.onCall = [&](int32_t opcode) {
            if (opcode == audioMasterAutomate) hosted.close();
        };
        const Held keys(desk(), {Platform::kKeyAlt, Platform::kKeyShift});
        for (int i = 0; i < 500 && hosted.isOpen(); ++i) {
            desk().wait(20);
            letThreadsRun();
        }
        ASSERT_FALSE(hosted.isOpen());
        EXPECT_EQ(0, UI::Native::WindowBase::liveWindows());
        hosted.host.onCall = {};
        ASSERT_TRUE(hosted.open());
    }
}

TEST_F(TicksTest, LeaveTheOpacityAloneUnlessItIsAnother)
{
    EXPECT_FALSE(desk().system.opacity()) << "opaque is how a window is";
    const std::pair<float, int> rows[] = {{50, 128}, {20, 51}, {99, 252}, {100, 255}, {-5, 0}, {300, 255}};
    for (const auto &[percent, byte] : rows) {
        settings.setOpacity(percent);
        root.slotUpdateNativeOpacity();
        EXPECT_EQ(desk().system.opacity(), byte) << percent;
        Platform::windowSystem().setOpacity(desk().window(), 7);
        root.slotUpdateAll();
        EXPECT_EQ(desk().system.opacity(), 7) << "nothing new";
    }
}

} // namespace
