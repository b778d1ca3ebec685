#include <cmath>

#include "tests/editor/Session.h"

namespace {

using namespace Platform;

class ButtonsTest : public testing::Test {
protected:
    static std::string bracketed(std::initializer_list<int32_t> hosts)
    {
        std::string text;
        for (const int32_t host : hosts) {
            const std::string n = std::to_string(host);
            text += (text.empty() ? "b" : " b") + n + " v" + n + " e" + n;
        }
        return text;
    }
    std::string states(int32_t firstHost) const
    {
        std::string text;
        for (int32_t band = 0; band < 4; ++band) text += session.value(firstHost + band) > 0.5f ? '1' : '0';
        return text;
    }
    void altClick(const ControlRow &row)
    {
        desk.moveTo(row.centre());
        const Held keys(desk, {kKeyAlt});
        desk.press();
        desk.release();
    }
    uint32_t barPixel(int32_t x) { return pixel(desk.shot(), {x, 237}); }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(ButtonsTest, ClicksAndKeysToggle)
{
    for (const ControlRow &row : controlTable()) {
        if (!row.isButton()) continue;
        SCOPED_TRACE(row.name);
        const bool automated = row.host != ControlRow::kNotAutomated;
        const std::string told = automated ? bracketed({row.host}) : "";
        desk.moveTo(row.centre());
        desk.press();
        EXPECT_TRUE(session.showsButton(row, false, true));
        EXPECT_EQ(session.told(), "");
        desk.release();
        EXPECT_EQ(session.told(), told);
        if (automated) {
            EXPECT_FLOAT_EQ(session.value(row.host), 1.0f);
            EXPECT_FLOAT_EQ(session.lastTold(row.host), 1.0f);
            EXPECT_FALSE(session.editing(row.host));
        }
        EXPECT_EQ(session.focused(), &row);
        desk.type(row.host % 2 ? kKeyUp : kKeyDown);
        EXPECT_EQ(session.told(), told);
        desk.type(kKeySpace);
        EXPECT_EQ(session.told(), "") << "no other key";
        desk.wait(0);
        desk.doubleClick();
        EXPECT_EQ(session.told(), automated ? told + " " + told : "") << "two presses, two toggles";
        if (automated) {
            EXPECT_FLOAT_EQ(session.value(row.host), 0.0f);
        }
    }
}

TEST_F(ButtonsTest, ThePressCountsOnlyOverTheButton)
{
    const ControlRow &row = control("limiter bypass");
    desk.moveTo(row.centre());
    desk.press();
    desk.moveTo(row.centre() + Point{-30, 0});
    EXPECT_TRUE(session.showsButton(row, false, false));
    desk.moveTo(row.centre());
    EXPECT_TRUE(session.showsButton(row, false, true));
    desk.release();
    EXPECT_EQ(session.told(), bracketed({8}));
    desk.drag(row.centre(), row.centre() + Point{0, 40});
    EXPECT_EQ(session.told(), "");
    EXPECT_TRUE(session.showsButton(control("solo 1"), false));
    for (const char *name : {"limiter bypass", "solo 3", "bypass 1"}) {
        const Rect place = control(name).place();
        desk.click(place.corner());
        desk.click({place.right, place.bottom});
        EXPECT_EQ(session.told(), "") << name << ": its edge is not part of it";
    }
    desk.click(control("brickwall").corner);
    EXPECT_EQ(session.told(), bracketed({9})) << "a box is hit everywhere";
}

TEST_F(ButtonsTest, AltMakesOneOfFourTheOnlyOne)
{
    for (const auto &[kind, host] : {std::pair{"solo ", 35}, std::pair{"bypass ", 31}}) {
        SCOPED_TRACE(kind);
        const std::string all = bracketed({host, host + 1, host + 2, host + 3});
        const ControlRow &second = control(kind + std::string("2"));
        altClick(second);
        EXPECT_EQ(session.told(), all) << "also of those that stay";
        EXPECT_EQ(states(host), "0100");
        altClick(second);
        EXPECT_EQ(states(host), "1011") << "alone before: the others take over";
        altClick(control(kind + std::string("4")));
        EXPECT_EQ(states(host), "0001");
        session.window(control(kind + std::string("1"))).setFocus();
        session.told();
        {
            const Held keys(desk, {kKeyAlt});
            desk.type(kKeyDown);
        }
        EXPECT_EQ(states(host), "1000");
        EXPECT_EQ(session.told(), all);
        {
            const Held keys(desk, {kKeyAlt, kKeyShift}); // a plain click
            desk.click(second.centre());
        }
        EXPECT_EQ(states(host), "1100");
        for (int32_t band = 0; band < 4; ++band) session.put(host + band, 0.0f);
        session.told();
    }
    altClick(control("limiter bypass"));
    EXPECT_EQ(session.told(), bracketed({8})) << "has no group";
}

TEST_F(ButtonsTest, BarsTellWhatIsHeard)
{
    constexpr uint32_t kBand[] = {0x3D7D96, 0xD68C17, 0x77963D, 0xAD47A5}, kGrey = 0x535353;
    const auto expectBars = [&](const char *active) {
        for (int32_t band = 0; band < 4; ++band)
            EXPECT_EQ(barPixel(7 + 104 * band + 2), active[band] == '1' ? kBand[band] : kGrey)
                << active << band;
    };
    expectBars("1111");
    desk.click(control("bypass 3").centre());
    expectBars("1101");
    desk.click(control("solo 2").centre());
    expectBars("0100");
    desk.click(control("solo 3").centre());
    expectBars("0100"); // bypassed in spite of solo
    session.put(35, 1.0f);
    expectBars("1100");
    EXPECT_EQ(barPixel(425), 0x626C7Bu);
    EXPECT_EQ(barPixel(539), 0x626C7Bu);
    desk.click(control("limiter bypass").centre());
    EXPECT_EQ(barPixel(425), kGrey);
    session.put(8, 0.0f);
    EXPECT_EQ(barPixel(425), 0x626C7Bu);
}

TEST_F(ButtonsTest, WordsWorkTheBoxes)
{
    const std::pair<Point, const char *> words[] = {
        {{500, 378}, "spectrum on input"}, {{500, 398}, "brickwall"}, {{500, 418}, "band link"}};
    for (const auto &[at, name] : words) {
        SCOPED_TRACE(name);
        const ControlRow &row = control(name);
        desk.click(at);
        EXPECT_TRUE(session.showsButton(row, true));
        EXPECT_EQ(session.told(), row.host >= 0 ? bracketed({row.host}) : "");
        desk.click(at);
        EXPECT_TRUE(session.showsButton(row, false));
        session.told();
    }
}

TEST_F(ButtonsTest, BrickwallNarrowsTheAttackOnShow)
{
    const ControlRow &attack = control("limiter attack"), &brickwall = control("brickwall");
    session.put(6, 12.0f);
    desk.click(brickwall.centre());
    EXPECT_TRUE(session.showsField(attack, "5.0"));
    EXPECT_FLOAT_EQ(session.value(6), 12.0f) << "the parameter stays";
    desk.click(brickwall.centre());
    EXPECT_TRUE(session.showsField(attack, "12.0"));
    session.put(9, 1.0f); // by the host
    EXPECT_TRUE(session.showsField(attack, "5.0"));
    desk.moveTo(attack.centre());
    desk.wheel(-120);
    EXPECT_NEAR(session.value(6), 4.0f, 1e-4f) << "counted from what is shown";
    desk.wheel(480);
    EXPECT_NEAR(session.value(6), 5.0f, 1e-4f);
}

} // namespace
