#include <chrono>
#include <gmock/gmock.h>
#include <thread>

#include "dsp/PluginLink.h"
#include "tests/editor/OffscreenDesk.h"
#include "tests/editor/TinyEditor.h"

using namespace Platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Kind = Event::Kind;
using Log = std::vector<std::string>;

namespace {

constexpr uint32_t kFrameMs = UI::MainWindowBase::kMinRenderMs;

struct Roots : ::testing::Test {
    void openAndForget()
    {
        editor.root->open();
        desk.wait(0);
        editor.takeCalls();
        desk.system.paints.clear();
    }
    size_t timers() const { return desk.system.timerCount(); }
    /// Real time passes, for the thread's sake; the window thread serves what comes.
    void serveFor(std::chrono::milliseconds duration)
    {
        const auto end = std::chrono::steady_clock::now() + duration;
        while (std::chrono::steady_clock::now() < end) {
            desk.wait(1);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    /// Until the thread's ticks have come through; false if none comes.
    bool serveUntilTick()
    {
        editor.root->tickTimes.clear();
        for (int i = 0; i < 5000 && editor.root->tickTimes.empty(); ++i)
            serveFor(std::chrono::milliseconds(1));
        return !editor.root->tickTimes.empty();
    }

    OffscreenDesk desk{547, 488};
    TinyEditor editor{desk};
    Log log;
};

} // namespace

TEST_F(Roots, OpenInTheirOrderAndPaintOnlyThen)
{
    bool askedEarly = false;
    editor.root->onCreate = [&] {
        auto *const probe = new ProbeWindow(editor, nullptr, "probe", log);
        probe->setGeometry(5, 5, 10, 10);
        desk.system.pump();
        EXPECT_TRUE(editor.send(Kind::paint));
        EXPECT_TRUE(editor.send(Kind::eraseBackground));
        EXPECT_TRUE(editor.root->isPaintingSuspended());
        EXPECT_THAT(log, IsEmpty());
        askedEarly = true;
    };
    EXPECT_TRUE(editor.root->isPaintingSuspended());
    editor.root->open();
    EXPECT_TRUE(askedEarly);
    EXPECT_FALSE(editor.root->isPaintingSuspended());
    EXPECT_THAT(editor.takeCalls(), ElementsAre("backgrounds", "controls", "update", "update more"));
    EXPECT_THAT(log, ElementsAre("probe paint 0-9 0-9")) << "all at once, within open";
    EXPECT_FALSE(editor.root->isTicking());
    EXPECT_EQ(timers(), 0u);
}

TEST_F(Roots, PaintTheirBackgroundsWhereTheyBelong)
{
    openAndForget();
    const auto image = std::make_shared<UI::Native::Surface>(3, 2);
    for (int i = 0; i < 6; ++i) image->pixels()[i] = 0x102030;
    editor.root->addImage(nullptr, {});
    editor.root->addImage(std::make_shared<UI::Native::Surface>(0, 0), {});
    editor.root->addImage(image, {100, 50});
    windowSystem().invalidate(editor.window, {}, false);
    desk.wait(0);
    const Bitmap shown = desk.shot();
    const auto at = [&](int x, int y) {
        return static_cast<uint32_t *>(shown.pixels())[y * shown.width() + x];
    };
    EXPECT_EQ(at(100, 50), 0x102030u);
    EXPECT_EQ(at(102, 51), 0x102030u);
    EXPECT_EQ(at(99, 50), 0u);
    EXPECT_EQ(at(103, 51), 0u);
}

TEST_F(Roots, RepaintEverythingWhenTheBackgroundIsErased)
{
    editor.root->onCreate = [&] {
        (new ProbeWindow(editor, nullptr, "probe", log))->setGeometry(5, 5, 10, 10);
    };
    openAndForget();
    for (const bool disabled : {true, false, true}) {
        disabled ? editor.root->slotDisableErases() : editor.root->slotEnableErases();
        log.clear();
        EXPECT_TRUE(editor.send(Kind::eraseBackground));
        EXPECT_EQ(log.size(), disabled ? 0u : 1u);
    }
}

TEST_F(Roots, SettleTheirWindowsEvents)
{
    openAndForget();
    for (const Kind kind : {Kind::paint, Kind::eraseBackground, Kind::setCursor, Kind::help, Kind::timer,
                            Kind::renderTick, Kind::custom, Kind::mouseMove, Kind::leftDown})
        EXPECT_TRUE(editor.send(kind, 77)) << static_cast<uint32_t>(kind);
    for (const Kind kind : {Kind::keyDown, Kind::focusIn, Kind::destroyed, Kind::dialogCode, Kind::leftUp,
                            Kind::wheel, Kind::rightDown, Kind::captureLost}) {
        if (kind == Kind::destroyed) continue; // would be believed
        EXPECT_FALSE(editor.send(kind)) << static_cast<uint32_t>(kind);
    }
    windowSystem().setFocus(desk.window());
    windowSystem().showCursor(windowSystem().loadCursor(CursorKind::hand));
    desk.click({300, 300});
    EXPECT_EQ(windowSystem().focus(), editor.window);
    EXPECT_EQ(desk.system.shownCursor(), CursorKind::arrow);

    windowSystem().setFocus(desk.window());
    editor.root->takesMouse = [](uint32_t, Point) { return true; };
    EXPECT_TRUE(editor.send(Kind::rightDown));
    EXPECT_TRUE(editor.send(Kind::leftDown));
    EXPECT_EQ(windowSystem().focus(), desk.window());
}

TEST_F(Roots, AnswerTheMessagesOfTheEffectByTheirCodes)
{
    editor.root->onCreate = [&] {
        (new ProbeWindow(editor, nullptr, "probe", log))->setGeometry(5, 5, 10, 10);
    };
    openAndForget();
    UI::MainWindowBase *const root = editor.root.get();
    const auto answer = [&](uint32_t code) {
        windowSystem().post(editor.window, code);
        desk.wait(0);
        return editor.takeCalls();
    };
    const Log update = {"update", "update more"};
    EXPECT_EQ(answer(0), update);
    EXPECT_THAT(answer(2), ElementsAre("event 2"));
    EXPECT_THAT(answer(3), ElementsAre("event 3"));
    for (const uint32_t code : {7u, 8u, 9u, 10u, 14u, 4000000000u})
        EXPECT_THAT(answer(code), ElementsAre("custom " + std::to_string(code)));
    for (const uint32_t code : {1u, 4u, 5u, 6u, 11u, 12u, 13u}) EXPECT_THAT(answer(code), IsEmpty());
    EXPECT_EQ(editor.effect.latenciesApplied, 1);

    const char *const signals[] = {"2sigHostAppSettingsChanged()", "2sigSamplingRateChanged()",
                                   "2sigNumChannelsChanged()"};
    const uint32_t codes[] = {1, 4, 5};
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(root->connect(root, signals[i], root, "1slotUpdateAll()"));
        for (int other = 0; other < 3; ++other)
            EXPECT_EQ(answer(codes[other]), other <= i ? update : Log())
                << signals[i] << " and " << codes[other];
    }

    log.clear();
    EXPECT_THAT(answer(12), IsEmpty());
    EXPECT_THAT(log, ElementsAre("probe paint 0-9 0-9")) << "the ground is erased, and all on it painted";
}

/// Requests that have not been served yet are one, and the next comes through again.
TEST_F(Roots, AreRefreshedOncePerRequestServed)
{
    openAndForget();
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 5; ++i) editor.effect.requestRefresh();
        desk.wait(0);
        EXPECT_THAT(editor.takeCalls(), ElementsAre("update", "update more"));
    }
}

TEST_F(Roots, RenderAtTheChosenRateButNeverTwiceIn30Milliseconds)
{
    openAndForget();
    editor.root->startTicking();
    for (const float fps : {60.0f, 47.0f, 34.0f, 30.0f, 20.0f, 5.0f}) {
        editor.settings().setFps(fps);
        desk.wait(0);
        EXPECT_EQ(timers(), 1u);
        const auto period = static_cast<uint32_t>(std::lround(1000.0f / fps));
        const uint32_t gap = (kFrameMs + period - 1) / period * period; // whole ticks
        desk.wait(gap);
        editor.root->tickTimes.clear();
        desk.wait(1000);
        const std::vector<uint32_t> &times = editor.root->tickTimes;
        EXPECT_NEAR(static_cast<double>(times.size()), 1000.0 / gap, 1.0) << fps;
        for (size_t i = 1; i < times.size(); ++i) EXPECT_EQ(times[i] - times[i - 1], gap) << fps;
    }
    editor.root->stopTicking();
    EXPECT_EQ(timers(), 0u);
    editor.settings().setFps(60);
    desk.wait(0);
    EXPECT_EQ(timers(), 0u) << "a new rate starts nothing";
}

TEST_F(Roots, StandAnyRateOfFrames)
{
    openAndForget();
    for (const bool threaded : {false, true}) {
        editor.settings().setRenderingThread(threaded);
        editor.root->startTicking();
        for (const float fps : {0.0f, -1.0f, 1e-30f, 1e30f, std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity()}) {
            editor.settings().setFps(fps);
            desk.wait(40);
        }
        editor.root->stopTicking();
    }
}

TEST_F(Roots, ChangeBetweenTimerAndThreadWhileTheyAreOpen)
{
    openAndForget();
    editor.root->startTicking();
    EXPECT_EQ(timers(), 1u);
    for (int round = 0; round < 3; ++round) {
        editor.settings().setRenderingThread(true);
        desk.wait(0);
        EXPECT_EQ(timers(), 0u);
        EXPECT_TRUE(serveUntilTick());
        editor.settings().setFps(round % 2 ? 20.0f : 60.0f); // the thread sees it by itself
        EXPECT_TRUE(serveUntilTick());
        editor.settings().setRenderingThread(false);
        desk.wait(0);
        EXPECT_EQ(timers(), 1u);
        editor.root->tickTimes.clear();
        std::this_thread::sleep_for(std::chrono::milliseconds(120));
        desk.system.pump();
        EXPECT_THAT(editor.root->tickTimes, IsEmpty()) << "the thread has ended";
        desk.wait(100);
        EXPECT_FALSE(editor.root->tickTimes.empty());
    }
    editor.root->stopTicking();
}

TEST_F(Roots, StopWithATickPendingWithoutWaitingForIt)
{
    openAndForget();
    editor.settings().setRenderingThread(true);
    for (int round = 0; round < 5; ++round) {
        editor.root->startTicking();
        std::this_thread::sleep_for(std::chrono::milliseconds(60)); // a tick waits by now
        const auto begun = std::chrono::steady_clock::now();
        if (round == 3) editor.effect.post(DSP::PluginLink::renderTimingChanged);
        if (round == 4) desk.destroyWindow();
        editor.root->stopTicking();
        EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(2));
        EXPECT_FALSE(editor.root->isTicking());
    }
}

/// A host may close the editor, or change its settings, from inside a call that a tick makes.
TEST_F(Roots, StopFromInsideATick)
{
    openAndForget();
    for (const bool threaded : {false, true}) {
        editor.settings().setRenderingThread(threaded);
        editor.root->startTicking();
        int stopped = 0;
        editor.root->onTick = [&] {
            editor.root->stopTicking();
            ++stopped;
        };
        for (int i = 0; i < 3000 && !stopped; ++i) serveFor(std::chrono::milliseconds(1));
        EXPECT_EQ(stopped, 1);
        EXPECT_FALSE(editor.root->isTicking());
        editor.root->onTick = nullptr;
    }
}

TEST_F(Roots, ChangeTheOpacityOfTheirWindowOnlyWhenItIsAnother)
{
    openAndForget();
    EXPECT_FALSE(desk.system.opacity()) << "opaque is how a window is";
    const std::pair<float, int> rows[] = {{50, 128}, {20, 51}, {99, 252}, {100, 255}, {-5, 0}, {300, 255}};
    for (const auto &[percent, byte] : rows) {
        editor.settings().setOpacity(percent);
        editor.root->slotUpdateNativeOpacity();
        EXPECT_EQ(desk.system.opacity(), byte) << percent;
        windowSystem().setOpacity(desk.window(), 7);
        editor.root->slotUpdateAll();
        EXPECT_EQ(desk.system.opacity(), 7) << "nothing new";
    }
}

TEST_F(Roots, ReturnPlaceToAWindowOfTheirHostAndBack)
{
    // The pending state of a whole life: opened, ticking, closed by destruction alone.
    openAndForget();
    editor.settings().setRenderingThread(true);
    editor.root->startTicking();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    editor.root.reset();
    EXPECT_EQ(UI::Native::FrameBase::liveFrames(), 0);
    EXPECT_EQ(desk.system.windowCount(), 2u) << "the host's and the editor's own";
}
