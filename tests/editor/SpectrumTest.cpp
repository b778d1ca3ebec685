#include <cmath>

#include "tests/editor/Session.h"

namespace {

using namespace Platform;

constexpr Rect kPlace = Rect::at({14, 24}, 377, 167);
const float kOctaves = std::log2(1000.0f); // 20 Hz to 20 kHz
constexpr uint32_t kLine = 0xFFFFFF;

int32_t columnOf(double hz)
{
    return static_cast<int32_t>(std::lround(std::log2(hz / 20.0) * 377.0 / kOctaves));
}
float hertzAt(int32_t column) { return 20.0f * std::exp2(static_cast<float>(column) * kOctaves / 377.0f); }

class SpectrumTest : public testing::Test {
protected:
    static Point at(int32_t column, int32_t row = 80) { return kPlace.corner() + Point{column, row}; }
    uint32_t shown(int32_t column, int32_t row) { return pixel(desk.shot(), at(column, row)); }
    uint32_t ground(int32_t column, int32_t row)
    {
        if (!picture) picture = UI::Native::loadSurface("MultiBandSpectrum_Background.png");
        return pixel(picture->bitmap(), {column, row});
    }
    void expectLines(std::initializer_list<int32_t> columns)
    {
        for (const int32_t column : columns)
            for (const int32_t row : {0, 1, 80, 81, 166}) {
                if (row % 2 == 0) {
                    EXPECT_EQ(shown(column, row), kLine) << column << ", " << row;
                } else {
                    EXPECT_EQ(shown(column, row), ground(column, row)) << column << ", " << row;
                }
            }
    }

    Session session;
    Desk &desk = *session.desk;
    UI::Native::SurfaceRef picture;
};

TEST_F(SpectrumTest, LinesAreDragged)
{
    expectLines({columnOf(120), columnOf(2000), columnOf(10000)});
    const int32_t mid = columnOf(2000);
    desk.moveTo(at(mid + 3));
    desk.press();
    EXPECT_EQ(session.told(), "b2");
    EXPECT_EQ(session.focused(), &control("mid cutoff"));
    EXPECT_TRUE(session.editing(2));
    desk.moveTo(at(mid + 3 - 40, 20));
    EXPECT_EQ(session.told(), "v2");
    EXPECT_NEAR(session.value(2), hertzAt(mid - 40), 0.01f * hertzAt(mid - 40));
    EXPECT_NEAR(session.lastTold(2), session.value(2), 0.01f);
    expectLines({columnOf(120), mid - 40, columnOf(10000)});
    char number[16];
    std::snprintf(number, sizeof number, "%.0f", static_cast<double>(session.value(2)));
    EXPECT_TRUE(session.showsField(control("mid cutoff"), number));

    desk.moveTo(at(0)); // towards the low line
    EXPECT_NEAR(session.value(2), hertzAt(columnOf(120) + 10), 0.01f);
    desk.moveTo(at(600, -50));
    EXPECT_NEAR(session.value(2), hertzAt(columnOf(10000) - 10), 1.0f);
    desk.release();
    EXPECT_EQ(session.told(), "v2 e2");
    EXPECT_FALSE(session.editing(2));

    desk.drag(at(columnOf(120)), at(-30));
    EXPECT_FLOAT_EQ(session.value(1), 20.0f) << "the end of the axis, to the hertz";
    desk.drag(at(columnOf(10000)), at(500));
    EXPECT_FLOAT_EQ(session.value(3), 20000.0f);
    EXPECT_EQ(session.told(), "b1 v1 e1 b3 v3 e3");
}

TEST_F(SpectrumTest, LinesAreHitWithinFivePixels)
{
    session.put(1, hertzAt(100));
    session.put(2, hertzAt(110));
    session.told();
    desk.click(at(94));
    desk.click(at(116));
    EXPECT_EQ(session.told(), "");
    desk.click(at(95));
    EXPECT_EQ(session.told(), "b1 e1");
    desk.click(at(115));
    desk.click(at(105)); // as far from both: the higher
    EXPECT_EQ(session.told(), "b2 e2 b2 e2");
}

TEST_F(SpectrumTest, ResetsKeepTheOrder)
{
    session.put(1, 3000.0f); // its default, 120 Hz, is legal by itself
    session.put(2, 5000.0f);
    session.told();
    desk.moveTo(at(columnOf(5000)));
    {
        const Held keys(desk, {kKeyAlt});
        desk.press();
        desk.release();
    }
    EXPECT_EQ(session.told(), "b1 v1 e1 b2 v2 e2") << "the lower one stands in the way";
    EXPECT_FLOAT_EQ(session.value(1), 120.0f);
    EXPECT_FLOAT_EQ(session.value(2), 2000.0f);
    session.put(3, 15000.0f);
    session.told();
    desk.moveTo(at(columnOf(15000)));
    desk.doubleClick();
    EXPECT_EQ(session.told(), "b3 e3 b3 v3 e3");
    EXPECT_FLOAT_EQ(session.value(3), 10000.0f);
    EXPECT_TRUE(session.showsField(control("high cutoff"), "10000"));
    expectLines({columnOf(120), columnOf(2000), columnOf(10000)});
}

TEST_F(SpectrumTest, AToneStandsInItsPlaceAndColour)
{
    session.play(tone(1000.0, -12.0, 65536));
    desk.wait(40);
    session.tick();                          // at the latest
    const int32_t peak = columnOf(1000) - 1; // columns of several bins are drawn one to the left
    const auto topOf = [&](int32_t column) {
        const Bitmap shot = desk.shot();
        int32_t row = 0;
        while (row < 166 && pixel(shot, at(column, row)) == ground(column, row)) ++row;
        return row;
    };
    int32_t top = 166, where = 0;
    for (int32_t column = peak - 6; column <= peak + 6; ++column)
        if (topOf(column) < top) top = topOf(where = column);
    EXPECT_NEAR(where, peak, 1);
    // 80 dB on 166 pixels: 12 dB, the filter's half, the window's six, and up to 1.5 dB between two bins.
    EXPECT_GE(top, 38);
    EXPECT_LE(top, 42);
    EXPECT_GT(topOf(columnOf(200)), 140);
    EXPECT_GT(topOf(columnOf(6000)), 140);
    for (int i = 0; i < 20; ++i) { // 120 dB a second
        session.play(Signals::silence(2048));
        desk.wait(40);
    }
    session.tick();
    EXPECT_EQ(topOf(where), 166) << "silence draws nothing";
}

} // namespace
