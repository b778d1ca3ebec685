#include <gmock/gmock.h>

#include "tests/editor/TinyEditor.h"
#include "ui/native/KeyboardProxy.h"

using namespace Platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Log = std::vector<std::string>;

namespace {

/// A frame whose insides are open.
struct OpenFrame final : UI::Native::FrameBase {
    using FrameBase::fontSpecs;
    using FrameBase::FrameBase;
    using FrameBase::keyboardProxy;
    using FrameBase::timers;
    using FrameBase::windows;
};

/// Counts what "2sigNullTimer(uint)" of a frame brings.
struct TimerRoot final : UI::MainWindowBase {
    using MainWindowBase::MainWindowBase;
    void createControls() override {}
    void onNullTimer(uint32_t timer) override { seen.push_back(timer); }
    std::vector<uint32_t> seen;
};

struct Timed final : UI::Native::Window {
    Timed(UI::Native::FrameBase *owner, std::vector<uint32_t> &where)
        : Window(owner, nullptr, "timed"), fired(where)
    {
    }
    void onTimer(uint32_t id) override
    {
        fired.push_back(id);
        if (then) then();
    }
    std::vector<uint32_t> &fired;
    std::function<void()> then;
};

struct Frames : ::testing::Test {
    std::unique_ptr<Desk> desk = Desk::make();
    TinyEffect effect;
    std::unique_ptr<OpenFrame> frame = std::make_unique<OpenFrame>(desk->window(), Point{5, 7}, &effect);
    std::vector<uint32_t> fired;
};

} // namespace

TEST_F(Frames, KeepTheirThreeFontsWhateverIsAskedFor)
{
    for (uint32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(frame->fontSpecs[i].height, -9);
        EXPECT_FALSE(frame->fontSpecs[i].bold);
    }
    EXPECT_STREQ(frame->fontSpecs[1].name.c_str(), "Arial Black");
    frame->setFont(2, {-20, "Arial", true});
    EXPECT_EQ(frame->fontSpecs[2].height, -20);
    frame->setFont(3, {-20, "Arial", true});
    frame->setFont(~0u, {-20, "Arial", true});
    EXPECT_EQ(frame->fontSpecs.size(), 3u);
    EXPECT_EQ(frame->fontSpecs[0].height, -9);
}

TEST_F(Frames, KeepTheKeyboardsProxyLast)
{
    new Timed(frame.get(), fired);
    frame->createKeyboardProxy();
    frame->createKeyboardProxy();
    EXPECT_EQ(frame->windows.size(), 2u);
    for (int i = 0; i < 3; ++i) {
        new Timed(frame.get(), fired);
        EXPECT_EQ(frame->windows.back(), static_cast<UI::Native::WindowBase *>(frame->keyboardProxy));
    }
    delete frame->windows.front();
    EXPECT_EQ(frame->windows.size(), 4u);
    EXPECT_EQ(frame->windows.back(), static_cast<UI::Native::WindowBase *>(frame->keyboardProxy));
}

TEST_F(Frames, MeasureThePointerFromTheirOrigin)
{
    const Point origin = frame->windowOrigin();
    const auto pointer = windowSystem().pointer();
    ASSERT_TRUE(pointer);
    EXPECT_EQ(frame->cursorPosition(), *pointer - origin - (Point{5, 7}));
    desk->destroyWindow();
    EXPECT_EQ(frame->windowOrigin(), Point{});
}

TEST_F(Frames, RunTimersThatAreDueOnce)
{
    auto *const window = new Timed(frame.get(), fired);
    const uint32_t now = frame->milliseconds();
    frame->timers = {{1, 0, now, window, false},         {2, 0, now, window, true},
                     {3, 1000, now, window, false},      {4, 50, now - 50, window, true},
                     {5, 100, now - 100, window, false}, {6, 0xFFFFFFFF, now, window, true}};
    frame->runTimers();
    EXPECT_THAT(fired, ElementsAre(1u, 2u, 4u, 5u));
    fired.clear();
    frame->runTimers();
    EXPECT_THAT(fired, ElementsAre(1u)) << "the one-shot ones have gone, 5 has to wait again";
    fired.clear();
    delete window;
    EXPECT_TRUE(frame->timers.empty());
}

TEST_F(Frames, StandTimersThatChangeTheListOfTimers)
{
    auto *const window = new Timed(frame.get(), fired);
    const uint32_t now = frame->milliseconds();
    const auto timer = [&](uint32_t id) {
        return decltype(frame->timers)::value_type{id, 0, now, window, false};
    };
    // Takes itself out: the next comes to stand in its place and is not left out.
    frame->timers = {timer(1), timer(2), timer(3)};
    window->then = [&] { std::erase_if(frame->timers, [&](const auto &t) { return t.id == fired.back(); }); };
    frame->runTimers();
    EXPECT_THAT(fired, ElementsAre(1u, 2u, 3u));
    // Adds others, which make the list move in memory.
    fired.clear();
    frame->timers = {timer(1)};
    window->then = [&] {
        for (int i = 0; i < 50 && fired.size() == 1; ++i) frame->timers.push_back(timer(7));
    };
    frame->runTimers();
    EXPECT_EQ(fired.size(), 51u);
    // Empties it.
    fired.clear();
    frame->timers = {timer(1), timer(2)};
    window->then = [&] { frame->timers.clear(); };
    frame->runTimers();
    EXPECT_THAT(fired, ElementsAre(1u));
    // Ends its own window.
    fired.clear();
    frame->timers = {timer(1), timer(2)};
    window->then = [&] { frame->forgetWindow(window); };
    frame->runTimers();
    EXPECT_THAT(fired, ElementsAre(1u));
    EXPECT_TRUE(frame->timers.empty());
    delete window;
}

TEST_F(Frames, TellTheEditorOfTimersWithoutAWindow)
{
    TimerRoot root(desk->window(), Point{}, &effect);
    root.connect(frame.get(), "2sigNullTimer(uint)", &root, "1slotNullTimer(uint)");
    frame->timers = {{9, 0, frame->milliseconds(), nullptr, true}};
    frame->runTimers();
    EXPECT_THAT(root.seen, ElementsAre(9u));
    EXPECT_TRUE(frame->timers.empty());
}

/// The proxy, reached as the system reaches it.
TEST(KeyboardProxy, SwallowsKeysAndEndsADragWhenTheFocusLeavesIt)
{
    const auto desk = Desk::make();
    TinyEditor editor(*desk);
    Log log;
    ProbeWindow *dragged = nullptr;
    UI::Native::KeyboardProxy *proxy = nullptr;
    editor.root->onCreate = [&] {
        dragged = new ProbeWindow(editor, nullptr, "dragged", log);
        dragged->setGeometry(10, 10, 20, 20);
        proxy =
            new UI::Native::KeyboardProxy(&editor.frame()); // another one: the frame keeps its own to itself
    };
    editor.root->open();
    desk->wait(0);
    EXPECT_FALSE(proxy->isVisible());
    EXPECT_NE(proxy->nativeHandle(), nullptr);
    log.clear();

    using Kind = Event::Kind;
    for (const Kind kind : {Kind::keyDown, Kind::keyUp, Kind::systemKeyDown, Kind::systemKeyUp,
                            Kind::character, Kind::focusIn, Kind::focusOut}) {
        Event event{};
        event.kind = kind;
        event.key = kKeyTab;
        EXPECT_EQ(proxy->onEvent(proxy->nativeHandle(), event), std::optional<intptr_t>(0));
    }
    Event other{};
    other.kind = Kind::dialogCode;
    EXPECT_EQ(proxy->onEvent(proxy->nativeHandle(), other), std::optional<intptr_t>(4));
    other.kind = Kind::paint;
    EXPECT_EQ(proxy->onEvent(proxy->nativeHandle(), other), std::nullopt);
    EXPECT_THAT(log, IsEmpty()) << "there is no drag to end";
    EXPECT_THAT(editor.takeCalls(), ::testing::Not(::testing::Contains(::testing::StartsWith("focus"))));

    dragged->duringHandler = [&] { editor.frame().releaseMouseCapture(); };
    windowSystem().setFocus(proxy->nativeHandle());
    editor.frame().setMouseCapture(dragged);
    windowSystem().setFocus(desk->window());
    EXPECT_THAT(log, ElementsAre("dragged up 0,0 0"));
}
