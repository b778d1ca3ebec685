#include <chrono>
#include <cmath>
#include <gmock/gmock.h>
#include <set>
#include <thread>

#include "tests/editor/HostedEffect.h"
#include "tests/editor/OffscreenDesk.h"
#include "ui/window/Window.h"

// The editor's ticks, from the offscreen timer or a thread, and their repaints.

namespace {

using testing::ElementsAre;
using Paints = std::vector<Platform::OffscreenWindowSystem::PaintRecord>;

class Ticks : public testing::Test {
protected:
    OffscreenDesk &desk() { return static_cast<OffscreenDesk &>(*hosted.desk); }
    Platform::OffscreenWindowSystem &system() { return desk().system; }
    /// Times of repaints during the next `ms` milliseconds of the simulated clock, in ms.
    std::vector<uint32_t> tickTimes(uint32_t ms)
    {
        std::vector<uint32_t> times;
        for (uint32_t time = 0; time < ms; ++time)
            if (!paintsIn(1).empty()) times.push_back(time);
        return times;
    }
    Paints paintsIn(uint32_t ms)
    {
        system().paints.clear();
        desk().wait(ms);
        return std::exchange(system().paints, {});
    }
    /// Waits until all meters have fallen.
    void settle()
    {
        hosted.play(Signals::silence(2 * HostedEffect::kRate));
        desk().wait(20000);
    }
    static void letThreadsRun() { std::this_thread::sleep_for(std::chrono::milliseconds(60)); }

    HostedEffect hosted;
    DSP::Global &settings = hosted.effect.global();
    UI::MainWindow &root = hosted.mainWindow();
};

TEST_F(Ticks, FollowTheFrameRateAtLeast30MillisecondsApart)
{
    for (const float fps : {60.0f, 47.0f, 34.0f, 30.0f, 20.0f, 5.0f}) {
        SCOPED_TRACE(fps);
        settings.setFps(fps);
        desk().wait(300);
        EXPECT_EQ(system().timerCount(), 1u);
        const auto period = static_cast<uint32_t>(std::lround(1000.0f / fps));
        const uint32_t gap = (UI::MainWindow::kMinRenderMs + period - 1) / period * period; // whole ticks
        const std::vector<uint32_t> times = tickTimes(1000);
        EXPECT_NEAR(static_cast<double>(times.size()), 1000.0 / gap, 1.0);
        for (size_t i = 1; i < times.size(); ++i) EXPECT_EQ(times[i] - times[i - 1], gap);
    }
    root.stopTicking();
    settings.setFps(60);
    desk().wait(0);
    EXPECT_EQ(system().timerCount(), 0u) << "a new frame rate must not start the ticks";
}

TEST_F(Ticks, StopWithoutWaitingForAPendingTick)
{
    settings.setRenderingThread(true);
    desk().wait(0);
    for (int round = 0; round < 4; ++round) {
        root.startTicking();
        letThreadsRun(); // a tick is pending now
        if (round == 3) desk().destroyWindow();
        root.stopTicking(); // must not deadlock
        EXPECT_FALSE(root.isTicking());
    }
}

// Some hosts close the editor from the callback that reports the link box.
TEST_F(Ticks, MayCloseTheEditor)
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

TEST_F(Ticks, SetTheOpacityOnlyWhenItChanges)
{
    EXPECT_FALSE(system().opacity()) << "set although windows are opaque by default";
    const std::pair<float, int> rows[] = {{50, 128}, {20, 51}, {99, 252}, {100, 255}, {-5, 0}, {300, 255}};
    for (const auto &[percent, byte] : rows) {
        settings.setOpacity(percent);
        root.slotUpdateNativeOpacity();
        EXPECT_EQ(system().opacity(), byte) << percent;
        system().setOpacity(desk().window(), 7);
        root.slotUpdateAll();
        EXPECT_EQ(system().opacity(), 7) << "opacity unchanged";
    }
}

TEST_F(Ticks, RepaintOnlyTheSpectrumWhenIdle)
{
    settle();
    const Paints paints = paintsIn(330);
    for (const auto &paint : paints) EXPECT_EQ(system().title(paint.window), "Multiband Spectrum");
    EXPECT_FALSE(paints.empty());
    EXPECT_LE(paints.size(), 10u) << "more than one per tick";
}

TEST_F(Ticks, RepaintOnlyMetersDuringPlayback)
{
    settle();
    hosted.play(Signals::sine(HostedEffect::kRate, 1000, 4410, -12));
    std::set<Platform::WindowHandle> seen;
    for (const auto &[window, area] : paintsIn(33)) {
        EXPECT_TRUE(seen.insert(window).second) << system().title(window) << " twice in a tick";
        EXPECT_NE(window, hosted.editor().window()) << "background repainted";
        const Rect place = system().screenRect(window);
        EXPECT_EQ(area.intersected(Rect::at({}, place.width(), place.height())), area);
    }
    EXPECT_GT(seen.size(), 1u);
    EXPECT_LT(seen.size(), 12u) << "meters, the readout and the spectrum";
}

} // namespace
