#include "tests/editor/Session.h"

// The editor as the host drives it.

namespace {

using namespace Platform;

class VSTEditorTest : public testing::Test {
protected:
    /// The answer to a key of the host.
    intptr_t hostKey(int32_t character, int32_t virtualKey, float modifier = 0.0f)
    {
        return session.effect.dispatch(effEditKeyDown, character, virtualKey, nullptr, modifier);
    }
    std::vector<uint32_t> screen()
    {
        const Bitmap shot = desk.shot();
        const auto *pixels = static_cast<const uint32_t *>(shot.pixels());
        return {pixels, pixels + shot.width() * shot.height()};
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(VSTEditorTest, TellsItsSize)
{
    for (const bool open : {true, false}) {
        if (!open) session.close();
        ERect *rect = nullptr;
        EXPECT_EQ(session.effect.dispatch(effEditGetRect, 0, 0, &rect), 1);
        ASSERT_NE(rect, nullptr);
        EXPECT_EQ(rect->top, 0);
        EXPECT_EQ(rect->left, 0);
        EXPECT_EQ(rect->bottom, 488);
        EXPECT_EQ(rect->right, 547);
    }
    EXPECT_EQ(hostKey(0, 12), -1) << "closed";
}

TEST_F(VSTEditorTest, HostKeysReachTheControls)
{
    const ControlRow &row = control("gain 2"), &slider = control("output slider");
    session.window(row).setFocus();
    struct Key {
        int32_t number; // the host's
        float from, to;
    };
    const Key keys[] = {{12, 0, 1}, {14, 1, 0}, {15, 0, 10}, {16, 10, 0}, {9, 0, 18}, {10, 18, -18}};
    for (const auto &[number, from, to] : keys) {
        ASSERT_FLOAT_EQ(session.value(row.host), from);
        EXPECT_EQ(hostKey(0, number), 1) << number;
        EXPECT_FLOAT_EQ(session.value(row.host), to) << number;
    }
    EXPECT_EQ(hostKey(12, 0), 1) << "the character, where there is no virtual key";
    EXPECT_FLOAT_EQ(session.value(row.host), -17.0f);
    desk.answerPrompt("3.5", true);
    EXPECT_EQ(hostKey(0, 41), 1) << "F2";
    EXPECT_FLOAT_EQ(session.value(row.host), 3.5f);
    for (const int32_t left : {0, 3, 6, 58, 200, -4}) EXPECT_EQ(hostKey(0, left), -1) << left;
    {
        const Held held(desk, {kKeyControl});
        EXPECT_EQ(hostKey(0, 12), 1);
        EXPECT_NEAR(session.value(row.host), 3.6f, 1e-4f);
    }
    session.window(slider).setFocus();
    EXPECT_EQ(hostKey(0, 15), 1);
    EXPECT_FLOAT_EQ(session.value(0), 3.0f);
    EXPECT_EQ(session.effect.dispatch(effEditKeyUp, 0, 15), -1);
}

TEST_F(VSTEditorTest, HostKeysMoveTheFocus)
{
    const auto &table = controlTable();
    session.window(table[0]).setFocus();
    EXPECT_EQ(hostKey(0, 2), 1); // only shows the mark
    EXPECT_EQ(hostKey(0, 2), 1);
    EXPECT_EQ(session.focused(), &table[1]);
    EXPECT_EQ(hostKey('t', 0), 1);
    EXPECT_EQ(session.focused(), &table[2]);
    EXPECT_EQ(hostKey(0, 2, 1.0f), 1) << "with shift";
    EXPECT_EQ(session.focused(), &table[1]);
    EXPECT_EQ(hostKey(0, 13), 1) << "right";
    EXPECT_EQ(session.focused(), &table[2]);
    EXPECT_EQ(hostKey(0, 11), 1) << "left";
    EXPECT_EQ(session.focused(), &table[1]);
    EXPECT_EQ(session.told(), "");
}

TEST_F(VSTEditorTest, ReopenedItShowsTheSame)
{
    for (int32_t host = 0; host < 39; ++host)
        session.effect.set(host, static_cast<float>(host % 7) / 8.0f + 0.1f);
    session.put(1, 80.0f);
    session.put(2, 900.0f);
    session.put(3, 7000.0f);
    desk.moveTo({545, 487});
    desk.wait(60);
    const auto before = screen();
    session.close();
    desk.wait(0);
    ASSERT_TRUE(session.open());
    desk.wait(60);
    EXPECT_EQ(screen(), before);
}

TEST_F(VSTEditorTest, IdleUpdatesWhenAsked)
{
    const ControlRow &row = control("output gain");
    session.effect.plugin().transformHandle().gain()->setFloatParamValue(0, 5.0f); // behind everybody's back
    session.effect.dispatch(effEditIdle);
    desk.wait(0);
    EXPECT_FALSE(session.showsField(row, "5.0"));
    session.editor().postUpdate();
    session.effect.dispatch(effEditIdle);
    desk.wait(0);
    EXPECT_TRUE(session.showsField(row, "5.0"));
}

TEST_F(VSTEditorTest, KeysWithoutAUseAreTheHosts)
{
    using Kind = Event::Kind;
    UI::Native::WindowBase &field = session.window(control("gain 2"));
    const auto isTaken = [&](Kind kind, uint32_t key) {
        Event event{};
        event.kind = kind;
        event.key = key;
        return field.onEvent(field.nativeHandle(), event) == std::optional<intptr_t>(0);
    };
    for (const uint32_t used : {kKeyTab, kKeyLeft, kKeyPageUp}) EXPECT_TRUE(isTaken(Kind::keyDown, used));
    EXPECT_FALSE(isTaken(Kind::keyDown, 'A'));
    EXPECT_FALSE(isTaken(Kind::keyUp, 'A'));
    EXPECT_FALSE(isTaken(Kind::systemKeyDown, 'F'));
    EXPECT_FALSE(isTaken(Kind::character, 'x'));
}

TEST_F(VSTEditorTest, ANewDelayReachesTheHost)
{
    session.host.takeCalls();
    session.effect.global().setDelayCompensation(false);
    EXPECT_EQ(session.host.count(audioMasterIOChanged), 0);
    desk.wait(0);
    EXPECT_EQ(session.host.count(audioMasterIOChanged), 1);
    EXPECT_EQ(session.effect->initialDelay, 0);
}

} // namespace
