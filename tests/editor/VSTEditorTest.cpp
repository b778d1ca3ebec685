#include "tests/editor/Session.h"
#include "ui/window/KeyboardProxy.h"

// Calls of the host to the editor.

namespace {

using namespace Platform;

class VSTEditors : public testing::Test {
protected:
    /// Passes a key from the host to the editor; returns the editor's answer.
    intptr_t hostKey(int32_t character, int32_t virtualKey, float modifier = 0.0f)
    {
        return session.effect.dispatch(effEditKeyDown, character, virtualKey, nullptr, modifier);
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(VSTEditors, ReportsItsSize)
{
    for (const bool open : {true, false}) {
        if (!open) session.close();
        ERect *rect = nullptr;
        EXPECT_EQ(session.effect.dispatch(effEditGetRect, 0, 0, &rect), 1);
        ASSERT_NE(rect, nullptr);
        EXPECT_EQ((std::array{rect->top, rect->left, rect->bottom, rect->right}),
                  (std::array<int16_t, 4>{0, 0, 488, 547}));
    }
    EXPECT_EQ(hostKey(0, 12), -1) << "closed";
}

TEST_F(VSTEditors, HostKeysReachTheFocusedControl)
{
    const ControlRow &row = control("gain 2");
    session.window(row).setFocus();
    const std::pair<int32_t, float> keys[] = {{12, 1}, {14, 0}, {15, 10}, {16, 0}, {9, 18}, {10, -18}};
    for (const auto &[number, value] : keys) {
        EXPECT_EQ(hostKey(0, number), 1) << number;
        EXPECT_FLOAT_EQ(session.value(row.host), value) << number;
    }
    EXPECT_EQ(hostKey(12, 0), 1) << "the character counts if the virtual key is 0";
    EXPECT_FLOAT_EQ(session.value(row.host), -17.0f);
    desk.answerPrompt("3.5", true);
    EXPECT_EQ(hostKey(0, 41), 1) << "F2";
    EXPECT_FLOAT_EQ(session.value(row.host), 3.5f);
    for (const int32_t left : {0, 3, 6, 58, 200, -4}) EXPECT_EQ(hostKey(0, left), -1) << left;
    for (const auto &[modifier, value] : {std::pair{kKeyControl, 3.6f}, {kKeyShift, 13.6f}}) {
        const Held held(desk, {modifier});
        EXPECT_EQ(hostKey(0, 12), 1);
        EXPECT_NEAR(session.value(row.host), value, 1e-4f);
    }
    session.window(control("output slider")).setFocus();
    EXPECT_EQ(hostKey(0, 15), 1);
    EXPECT_FLOAT_EQ(session.value(0), 3.0f);
    EXPECT_EQ(session.effect.dispatch(effEditKeyUp, 0, 15), -1);
}

TEST_F(VSTEditors, HostKeysMoveTheFocus)
{
    struct Key {
        int32_t character, virtualKey;
        float modifier;
        size_t reached;
    };
    const Key keys[] = {{0, 2, 0, 0}, // the first Tab only shows the focus mark
                        {0, 2, 0, 1},  {'t', 0, 0, 2}, {0, 2, 1, 1}, // with Shift
                        {0, 13, 0, 2},                               // right
                        {0, 11, 0, 1}};                              // left
    session.window(controlTable()[0]).setFocus();
    for (const auto &[character, virtualKey, modifier, reached] : keys) {
        EXPECT_EQ(hostKey(character, virtualKey, modifier), 1);
        EXPECT_EQ(session.focused(), &controlTable()[reached]);
    }
    EXPECT_EQ(session.told(), "");
}

TEST_F(VSTEditors, IdleUpdatesOnlyOnRequest)
{
    const ControlRow &row = control("output gain");
    session.effect.plugin().transformHandle().gain()->setFloatParamValue(DSP::Gain::Param::gain,
                                                                         5.0f); // sends no notification
    for (const bool asked : {false, true}) {
        if (asked) session.editor().postUpdate();
        session.effect.dispatch(effEditIdle);
        desk.wait(0);
        EXPECT_EQ(session.showsField(row, "5.0"), asked);
    }
}

TEST_F(VSTEditors, UnusedKeysAreLeftToTheHost)
{
    using Kind = Event::Kind;
    const auto isTaken = [](UI::Native::WindowBase &by, Kind kind, uint32_t key) {
        Event event{};
        event.kind = kind;
        event.key = key;
        return by.onEvent(by.nativeHandle(), event) == std::optional<intptr_t>(0);
    };
    UI::Native::WindowBase &field = session.window(control("gain 2"));
    for (const uint32_t used : {kKeyTab, kKeyLeft, kKeyPageUp})
        EXPECT_TRUE(isTaken(field, Kind::keyDown, used));
    EXPECT_FALSE(isTaken(field, Kind::keyDown, 'A'));
    EXPECT_FALSE(isTaken(field, Kind::keyUp, 'A'));
    EXPECT_FALSE(isTaken(field, Kind::systemKeyDown, 'F'));
    EXPECT_FALSE(isTaken(field, Kind::character, 'x'));
    UI::Native::KeyboardProxy proxy(&session.frame()); // takes all keys
    for (const auto kind : {Kind::keyDown, Kind::systemKeyUp, Kind::character})
        EXPECT_TRUE(isTaken(proxy, kind, kKeyTab));
}

TEST_F(VSTEditors, ReportsANewDelayToTheHost)
{
    session.host.takeCalls();
    session.effect.global().setDelayCompensation(false);
    EXPECT_EQ(session.host.count(audioMasterIOChanged), 0);
    desk.wait(0);
    EXPECT_EQ(session.host.count(audioMasterIOChanged), 1);
    EXPECT_EQ(session.effect->initialDelay, 0);
}

} // namespace
