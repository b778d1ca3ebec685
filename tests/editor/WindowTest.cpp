#include <gmock/gmock.h>

#include "tests/editor/TinyEditor.h"

using namespace Platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Log = std::vector<std::string>;

namespace {

/// Two controls side by side, with one inside the first:
///   outer at (50, 60), 200 x 100; inner in it at (20, 10), 80 x 40; other at (300, 60), 100 x 100
struct Windows : ::testing::Test {
    Windows()
    {
        editor.root->onCreate = [this] {
            outer = new ProbeWindow(editor, nullptr, "outer", log);
            inner = new ProbeWindow(editor, outer, "inner", log);
            other = new ProbeWindow(editor, nullptr, "other", log);
            outer->setGeometry(50, 60, 200, 100);
            inner->setGeometry(20, 10, 80, 40);
            other->setGeometry(300, 60, 100, 100);
        };
        editor.root->open();
        desk->wait(0);
        desk->moveTo({500, 400});
        clear();
    }
    void clear()
    {
        log.clear();
        editor.takeCalls();
    }
    Log take() { return std::exchange(log, {}); }
    /// Without paints, which come when the back end likes.
    Log takeActs()
    {
        Log acts = take();
        std::erase_if(acts, [](const std::string &act) { return act.find(" paint ") != std::string::npos; });
        return acts;
    }

    std::unique_ptr<Desk> desk = Desk::make();
    TinyEditor editor{*desk};
    Log log;
    ProbeWindow *outer = nullptr, *inner = nullptr, *other = nullptr;
};

Event keyEvent(Event::Kind kind, uint32_t key, uint32_t mods = 0, bool repeated = false)
{
    Event event{};
    event.kind = kind;
    event.key = key;
    event.modifiers = mods;
    event.repeated = repeated;
    return event;
}

} // namespace

TEST_F(Windows, ReportOnlyRealChangesOfTheirPlace)
{
    const Rect before = outer->getGeometry();
    const int times = outer->timesMoved;
    outer->setGeometry(50, 60, 200, 100);
    outer->setGeometry(1, 2, 0, 100);
    outer->setGeometry(1, 2, 200, -3);
    EXPECT_EQ(outer->getGeometry(), before);
    EXPECT_EQ(outer->timesMoved, times);
    outer->setGeometry(50, 60, 210, 100);
    EXPECT_EQ(outer->timesMoved, times + 1);
    EXPECT_EQ(outer->getGeometry(), Rect::at({50, 60}, 210, 100));
}

TEST_F(Windows, KnowTheirPlaceInTheFrameWhereverTheirParentsGo)
{
    auto *const deep = new ProbeWindow(editor, inner, "deep", log);
    EXPECT_EQ(deep->toFrame({0, 0}), (Point{70, 70})) << "at its parent's corner before it is placed";
    deep->setGeometry(3, 4, 10, 10);
    EXPECT_EQ(deep->toFrame({1, 1}), (Point{74, 75}));
    const Rect place = inner->getGeometry();
    const int times = inner->timesMoved;
    outer->setGeometry(-5, 7, 200, 100);
    EXPECT_EQ(inner->frameRect(), Rect::at({15, 17}, 80, 40));
    EXPECT_EQ(deep->toFrame({0, 0}), (Point{18, 21}));
    EXPECT_EQ(inner->getGeometry(), place);
    EXPECT_EQ(inner->timesMoved, times);
}

TEST_F(Windows, HandAPressUpUntilSomebodyTakesIt)
{
    windowSystem().setFocus(other->nativeHandle());
    clear();
    desk->click({75, 75});
    EXPECT_THAT(takeActs(), ElementsAre("inner down 5,5 1", "outer down 25,15 1", "other focus out",
                                        "inner up 5,5 0", "outer up 25,15 0"));
    EXPECT_EQ(windowSystem().focus(), editor.window) << "the host's turn";

    outer->takes = {0};
    windowSystem().setFocus(other->nativeHandle());
    clear();
    desk->click({75, 75});
    EXPECT_THAT(takeActs(),
                ElementsAre("inner down 5,5 1", "outer down 25,15 1", "inner up 5,5 0", "outer up 25,15 0"));
    EXPECT_TRUE(other->hasFocus());

    inner->takes = {0, 2, 3};
    desk->doubleClick();
    desk->pressRight();
    desk->releaseRight();
    EXPECT_THAT(takeActs(),
                ElementsAre("inner down 5,5 1", "inner up 5,5 0", "outer up 25,15 0", "inner double 5,5 1",
                            "inner up 5,5 0", "outer up 25,15 0", "inner right down 5,5 4",
                            "inner right up 5,5 0", "outer right up 25,15 0"));
}

TEST_F(Windows, FollowTheKeysHeldAndTheWheel)
{
    inner->takes = {0, 1, 7};
    inner->setFocus();
    desk->moveTo({75, 75});
    clear();
    {
        const Held held(*desk, {kKeyControl, kKeyShift});
        clear();
        desk->press();
        desk->release();
        desk->wheel(-240);
    }
    EXPECT_EQ(log.at(0), "inner down 5,5 25");
    EXPECT_EQ(log.at(1), "inner up 5,5 24");
    EXPECT_EQ(log.at(2), "inner wheel -240 5,5 24");
}

TEST_F(Windows, GetEachEventOfTheMouseByItsNumber)
{
    const char *const names[] = {"down",     "up",           "double", "right down",
                                 "right up", "right double", "move",   "wheel 120"};
    for (uint32_t kind = 0; kind < 8; ++kind)
        for (const bool taken : {false, true}) {
            inner->takes = taken ? std::vector{kind} : std::vector<uint32_t>();
            EXPECT_EQ(inner->dispatchMouse(kind, {-3, 900}, kLeftButton | kShift, 120), taken);
            EXPECT_THAT(take(), ElementsAre("inner " + std::string(names[kind]) + " -3,900 17"));
        }
    EXPECT_FALSE(inner->dispatchMouse(8, {}, 0, 0));
    EXPECT_THAT(take(), IsEmpty());
}

TEST_F(Windows, SeeMovesInADragOrWhenTheyAskAndShieldTheirParentsByACursor)
{
    constexpr uint32_t kMove = 6;
    for (const bool wantsAll : {false, true}) {
        if (wantsAll) inner->wantAllMoves();
        for (const bool ownCursor : {false, true}) {
            inner->setCursor(ownCursor ? windowSystem().loadCursor(CursorKind::hand) : nullptr);
            for (const bool taken : {false, true}) {
                inner->takes = taken ? std::vector{kMove} : std::vector<uint32_t>();
                for (uint32_t mods = 0; mods < 32; ++mods) {
                    const bool seen = wantsAll || (mods & (kLeftButton | kRightButton)) != 0;
                    EXPECT_EQ(inner->dispatchMouse(kMove, {1, 2}, mods, 0), (seen && taken) || ownCursor);
                    EXPECT_EQ(take().size(), seen ? 1u : 0u) << mods;
                }
            }
        }
    }
}

TEST_F(Windows, LeaveTabAndTheSideArrowsToTheMovingOfTheFocus)
{
    inner->setFocus();
    clear();
    desk->type(kKeyTab);
    desk->type(kKeyLeft);
    desk->type(kKeyRight);
    {
        const Held shift(*desk, {kKeyShift});
        desk->type(kKeyTab);
        desk->type(kKeyRight);
    }
    EXPECT_THAT(editor.takeCalls(),
                ElementsAre("focus next", "focus previous", "focus next", "focus previous", "focus next"));
    for (const std::string &act : takeActs())
        for (const char *key : {" key 9 ", " key 37 ", " key 39 "})
            EXPECT_EQ(act.find(key), std::string::npos) << act;
    desk->type(kKeyUp);
    EXPECT_THAT(takeActs(), ElementsAre("inner key 38 0", "inner key up 38 0"));
}

TEST_F(Windows, LeaveKeysThatTheyDoNotTakeToTheHost)
{
    using Kind = Event::Kind;
    const auto send = [&](const Event &event) { return inner->onEvent(inner->nativeHandle(), event); };
    for (const bool takes : {false, true}) {
        inner->takesKeys = takes;
        for (const Event &event :
             {keyEvent(Kind::keyDown, 65, 24, true), keyEvent(Kind::keyUp, 65, 31),
              keyEvent(Kind::systemKeyDown, kKeyLeft, 8), keyEvent(Kind::systemKeyUp, kKeyTab),
              keyEvent(Kind::character, 'x', 0, true)})
            EXPECT_EQ(send(event), takes ? std::optional<intptr_t>(0) : std::nullopt);
        EXPECT_THAT(take(), ElementsAre("inner key 65 24 again", "inner key up 65 24", "inner key 37 8",
                                        "inner key up 9 0", "inner char 120 0 again"));
        EXPECT_EQ(send(keyEvent(Kind::keyDown, kKeyTab)), std::optional<intptr_t>(0));
    }
    EXPECT_EQ(send(keyEvent(Kind::dialogCode, 0)), std::optional<intptr_t>(4));
    EXPECT_EQ(send(keyEvent(Kind::eraseBackground, 0)), std::optional<intptr_t>(1));
    for (const Kind kind :
         {Kind::focusIn, Kind::focusOut, Kind::setCursor, Kind::help, Kind::timer, Kind::custom})
        EXPECT_EQ(send(keyEvent(kind, 0)), std::nullopt);
}

TEST_F(Windows, DragBeyondTheirEdgesWhileTheyHoldTheMouse)
{
    inner->takes = {0, 1, 6};
    inner->duringHandler = [&] {
        if (!editor.frame().mouseCaptureWindow()) editor.frame().setMouseCapture(inner);
    };
    desk->moveTo({75, 75});
    desk->press();
    inner->duringHandler = nullptr;
    clear();
    desk->moveTo({10, 5});
    desk->moveTo({350, 400});
    EXPECT_THAT(takeActs(), ElementsAre("inner move -60,-65 1", "inner move 280,330 1"));
    EXPECT_THAT(editor.takeCalls(), ElementsAre("captured 6 at 10,5", "captured 6 at 350,400"));
    inner->duringHandler = [&] { editor.frame().releaseMouseCapture(); };
    desk->release();
    EXPECT_THAT(takeActs(), ElementsAre("inner up 280,330 0"));
    EXPECT_EQ(editor.frame().mouseCaptureWindow(), nullptr);
    desk->moveTo({75, 75});
    EXPECT_THAT(takeActs(), IsEmpty()) << "it asked for moves in a drag only";
}

TEST_F(Windows, EndTheirDragOnceWhenAnotherTakesTheMouse)
{
    UI::Native::Frame &frame = editor.frame();
    for (const bool releases : {true, false}) {
        inner->duringHandler = [&] {
            if (releases && frame.mouseCaptureWindow() == inner) frame.releaseMouseCapture();
        };
        frame.setMouseCapture(nullptr);
        EXPECT_EQ(frame.mouseCaptureWindow(), nullptr);
        frame.setMouseCapture(inner);
        EXPECT_THAT(takeActs(), IsEmpty());
        frame.setMouseCapture(other);
        EXPECT_THAT(takeActs(), ElementsAre("inner up 0,0 0"));
        EXPECT_EQ(frame.mouseCaptureWindow(), other);
        frame.releaseMouseCapture();
        frame.releaseMouseCapture();
        EXPECT_THAT(takeActs(), IsEmpty());
    }
}

TEST_F(Windows, LoseTheMouseToAWindowOfTheHostAndLeaveItThere)
{
    UI::Native::Frame &frame = editor.frame();
    for (const bool releases : {true, false}) {
        inner->duringHandler = [&] {
            if (releases) frame.releaseMouseCapture();
        };
        frame.setMouseCapture(inner);
        windowSystem().captureMouse(desk->window());
        EXPECT_THAT(takeActs(), ElementsAre("inner up 0,0 0"));
        EXPECT_EQ(frame.mouseCaptureWindow(), nullptr);
        desk->click({75, 75});
        EXPECT_THAT(takeActs(), IsEmpty()) << "the host's window holds the mouse";
        windowSystem().releaseMouse();
    }
}

TEST_F(Windows, EndADragAtOnceThatHasNoWindowAnyMore)
{
    desk->destroyWindow();
    clear();
    editor.frame().setMouseCapture(inner);
    EXPECT_THAT(takeActs(), ElementsAre("inner up 0,0 0"));
    EXPECT_EQ(editor.frame().mouseCaptureWindow(), nullptr);
}

TEST_F(Windows, ShowEachMouseEventToTheEditorFirst)
{
    std::vector<uint32_t> kinds;
    Point last;
    editor.root->takesMouse = [&](uint32_t kind, Point at) {
        kinds.push_back(kind);
        last = at;
        return kind == 0;
    };
    inner->setFocus();
    desk->moveTo({75, 75});
    clear();
    kinds.clear();
    desk->press();
    desk->release();
    EXPECT_THAT(kinds, ElementsAre(0u, 1u));
    EXPECT_EQ(last, (Point{75, 75}));
    EXPECT_THAT(takeActs(), ElementsAre("inner up 5,5 0", "outer up 25,15 0"));
    EXPECT_TRUE(inner->hasFocus()) << "a press that the editor takes moves no focus";
}

TEST_F(Windows, TakeTheFocusAndTellOfItIfTheyShall)
{
    UI::Native::WindowBase *const listener = other;
    inner->connect(inner, "2sigReceivedFocus()", listener, "1slotSetFocus()");
    inner->setFocus();
    EXPECT_TRUE(inner->hasFocus()) << "no signal unless it is wanted";
    windowSystem().setFocus(editor.window);
    inner->signalFocus();
    take();
    inner->setFocus();
    EXPECT_TRUE(other->hasFocus()) << "by way of the signal and the slot";
    inner->refuseFocus();
    inner->setFocus();
    EXPECT_TRUE(other->hasFocus());
    outer->setFocusForward(other);
    windowSystem().setFocus(editor.window);
    outer->takeFocus();
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(Windows, ShowAndHide)
{
    other->hide();
    EXPECT_FALSE(other->isVisible());
    other->show(false);
    EXPECT_TRUE(other->isVisible());
    EXPECT_THAT(takeActs(), ElementsAre("other hide", "other show"));
    other->hide();
    clear();
    desk->click({310, 70});
    EXPECT_THAT(takeActs(), IsEmpty());
}

TEST_F(Windows, PaintAPartAtOnceAndOwesNothingThen)
{
    other->invalidate(Rect{5, 4, 0, 9});
    other->repaintNow(Rect{0, 9, 5, 4});
    desk->wait(0);
    EXPECT_THAT(take(), IsEmpty()) << "an empty part";
    other->invalidate(Rect{5, 14, 6, 9});
    other->repaintNow(Rect{5, 14, 6, 9});
    EXPECT_THAT(take(), ElementsAre("other paint 5-14 6-9"));
    desk->wait(0);
    EXPECT_THAT(take(), IsEmpty());
    other->repaintNow();
    EXPECT_THAT(take(), ElementsAre("other paint 0-99 0-99"));
    other->invalidate(Rect{5, 14, 6, 9});
    desk->wait(50);
    EXPECT_THAT(take(), ElementsAre("other paint 5-14 6-9"));
}

TEST_F(Windows, OutliveTheirNativeWindows)
{
    editor.frame().setMouseCapture(inner);
    desk->destroyWindow();
    EXPECT_EQ(inner->nativeHandle(), nullptr);
    clear();
    inner->setGeometry(1, 1, 5, 5);
    inner->invalidate();
    inner->repaintNow();
    inner->raise();
    inner->hide();
    inner->show(true);
    inner->setFocus();
    EXPECT_FALSE(inner->hasFocus());
    inner->setCursor(windowSystem().loadCursor(CursorKind::hand));
    editor.root->startTicking();
    editor.root->tick();
    editor.root->stopTicking();
    delete inner;
    EXPECT_EQ(editor.frame().mouseCaptureWindow(), nullptr);
}

TEST_F(Windows, HearNothingMoreWhenTheFrameIsGoing)
{
    const int32_t live = UI::Native::WindowBase::liveWindows();
    struct Last : ProbeWindow {
        using ProbeWindow::ProbeWindow;
        ~Last() override
        {
            Event press{};
            answer = neighbour->onEvent(neighbour->nativeHandle(), press);
            *heard = answer.has_value();
        }
        UI::Native::WindowBase *neighbour = nullptr;
        std::optional<intptr_t> answer;
        bool *heard = nullptr;
    };
    bool heard = true;
    auto *const last = new Last(editor, nullptr, "last", log);
    auto *const after = new ProbeWindow(editor, nullptr, "after", log); // goes later
    after->takes = {0};
    last->neighbour = after;
    last->heard = &heard;
    clear();
    editor.root.reset();
    EXPECT_FALSE(heard);
    EXPECT_THAT(takeActs(), IsEmpty());
    EXPECT_EQ(UI::Native::WindowBase::liveWindows(), live - 4) << "three controls and the proxy";
}
