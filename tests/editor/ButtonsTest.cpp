#include "tests/editor/Session.h"

namespace {

using namespace Platform;

class Buttons : public testing::Test {
protected:
    std::string states(int32_t firstHost) const
    {
        std::string text;
        for (int32_t band = 0; band < 4; ++band) text += session.value(firstHost + band) > 0.5f ? '1' : '0';
        return text;
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(Buttons, ClicksAndKeysToggle)
{
    for (const ControlRow &row : controlTable()) {
        if (!row.isButton()) continue;
        SCOPED_TRACE(row.name);
        const bool automated = row.host != ControlRow::kNotAutomated;
        const std::string told = automated ? bracketed(row.host) : "";
        desk.moveTo(row.centre());
        desk.press();
        EXPECT_TRUE(session.showsButton(row, false, true));
        EXPECT_EQ(session.told(), "");
        desk.release();
        EXPECT_EQ(session.told(), told);
        if (automated) {
            EXPECT_FLOAT_EQ(session.lastTold(row.host), 1.0f);
            EXPECT_FLOAT_EQ(session.value(row.host), 1.0f);
        }
        EXPECT_EQ(session.focused(), &row);
        desk.type(row.host % 2 ? kKeyUp : kKeyDown);
        EXPECT_EQ(session.told(), told);
        desk.type(kKeySpace);
        EXPECT_EQ(session.told(), "") << "Space has no function";
        desk.wait(0);
        desk.doubleClick();
        EXPECT_EQ(session.told(), automated ? told + " " + told : "") << "a double click toggles twice";
        EXPECT_TRUE(session.showsButton(row, false));
    }
}

TEST_F(Buttons, ToggleOnlyIfReleasedOverTheButton)
{
    const ControlRow &row = control("limiter bypass");
    desk.moveTo(row.centre());
    desk.press();
    desk.moveTo(row.centre() + Point{-30, 0});
    EXPECT_TRUE(session.showsButton(row, false, false));
    desk.moveTo(row.centre());
    EXPECT_TRUE(session.showsButton(row, false, true));
    desk.release();
    EXPECT_EQ(session.told(), bracketed(8));
    desk.drag(row.centre(), row.centre() + Point{0, 40});
    EXPECT_EQ(session.told(), "");
    for (const char *name : {"limiter bypass", "solo 3", "bypass 1"}) {
        const Rect place = control(name).place();
        desk.click(place.corner());
        desk.click({place.right, place.bottom});
        EXPECT_EQ(session.told(), "") << name << ": the edge is not clickable";
    }
    desk.click(control("brickwall").corner);
    EXPECT_EQ(session.told(), bracketed(9)) << "the edge of a box is clickable";
}

TEST_F(Buttons, AltClickTurnsTheOtherBandsOff)
{
    for (const auto &[kind, host] : {std::pair{"solo ", 35}, std::pair{"bypass ", 31}}) {
        SCOPED_TRACE(kind);
        const Point second = control(kind + std::string("2")).centre();
        desk.click(second, {kKeyAlt});
        EXPECT_EQ(session.told(), bracketed(host, 4)) << "unchanged bands are reported, too";
        EXPECT_EQ(states(host), "0100");
        desk.click(second, {kKeyAlt});
        EXPECT_EQ(states(host), "1011") << "Alt-clicking the only active band inverts all four";
        session.window(control(kind + std::string("4"))).setFocus();
        session.told();
        {
            const Held keys(desk, {kKeyAlt});
            desk.type(kKeyDown);
        }
        EXPECT_EQ(states(host), "0001");
        EXPECT_EQ(session.told(), bracketed(host, 4));
        desk.click(second, {kKeyAlt, kKeyShift});
        EXPECT_EQ(states(host), "0101") << "with Shift, Alt has no effect";
        for (int32_t band = 0; band < 4; ++band) session.put(host + band, 0.0f);
        session.told();
    }
    desk.click(control("limiter bypass").centre(), {kKeyAlt});
    EXPECT_EQ(session.told(), bracketed(8)) << "not part of a group";
}

TEST_F(Buttons, ClickingALabelTogglesItsBox)
{
    const std::pair<Point, const char *> labels[] = {
        {{500, 378}, "spectrum on input"}, {{500, 398}, "brickwall"}, {{500, 418}, "band link"}};
    for (const auto &[at, name] : labels)
        for (const bool on : {true, false}) {
            const ControlRow &row = control(name);
            desk.click(at);
            EXPECT_TRUE(session.showsButton(row, on)) << name;
            EXPECT_EQ(session.told(), row.host >= 0 ? bracketed(row.host) : "") << name;
        }
}

TEST_F(Buttons, BrickwallLimitsTheDisplayedAttack)
{
    const ControlRow &attack = control("limiter attack");
    const Point brickwall = control("brickwall").centre();
    session.put(6, 12.0f);
    desk.click(brickwall);
    EXPECT_TRUE(session.showsField(attack, "5.0"));
    EXPECT_FLOAT_EQ(session.value(6), 12.0f) << "parameter changed";
    desk.click(brickwall);
    EXPECT_TRUE(session.showsField(attack, "12.0"));
}

} // namespace
