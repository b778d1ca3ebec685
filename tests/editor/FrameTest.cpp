#include <gmock/gmock.h>

#include "tests/editor/HostedEffect.h"
#include "ui/native/KeyboardProxy.h"
#include "ui/native/Window.h"

namespace {

using ::testing::ElementsAre;

/// A frame whose insides are open.
struct OpenFrame final : UI::Native::FrameBase {
    using FrameBase::FrameBase;
    using FrameBase::timers;
};

struct Timed final : UI::Native::Window {
    Timed(UI::Native::FrameBase *owner, std::vector<uint32_t> &where)
        : Window(owner, nullptr, "timed"), fired(where)
    {
    }
    void onTimer(uint32_t id) override { fired.push_back(id); }
    std::vector<uint32_t> &fired;
};

TEST(FrameTest, RunsTimersThatAreDueOnce)
{
    HostedEffect hosted;
    OpenFrame frame(hosted.desk->window(), Point{}, &hosted.effect.plugin());
    std::vector<uint32_t> fired;
    auto *const window = new Timed(&frame, fired);
    const uint32_t now = frame.milliseconds();
    frame.timers = {{1, 0, now, window, false},         {2, 0, now, window, true},
                    {3, 1000, now, window, false},      {4, 50, now - 50, window, true},
                    {5, 100, now - 100, window, false}, {6, 0xFFFFFFFF, now, window, true}};
    frame.runTimers();
    EXPECT_THAT(fired, ElementsAre(1u, 2u, 4u, 5u));
    fired.clear();
    frame.runTimers();
    EXPECT_THAT(fired, ElementsAre(1u)) << "the one-shot ones have gone, 5 has to wait again";
    delete window;
    EXPECT_TRUE(frame.timers.empty());
}

TEST(FrameTest, SwallowsTheKeysOfItsProxy)
{
    HostedEffect hosted;
    UI::Native::KeyboardProxy proxy(&hosted.frame()); // another one: the frame keeps its own to itself
    for (const auto kind : {Platform::Event::Kind::keyDown, Platform::Event::Kind::systemKeyUp,
                            Platform::Event::Kind::character}) {
        Platform::Event event{};
        event.kind = kind;
        event.key = Platform::kKeyTab;
        EXPECT_EQ(proxy.onEvent(proxy.nativeHandle(), event), std::optional<intptr_t>(0));
    }
}

} // namespace
