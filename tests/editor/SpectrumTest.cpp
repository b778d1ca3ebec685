#include "tests/editor/Session.h"

namespace {

using namespace Platform;

constexpr Rect kPlace = Rect::at({14, 24}, 377, 167);
const double kOctaves = std::log2(1000.0); // 20 Hz to 20 kHz

int32_t columnOf(double hz)
{
    return static_cast<int32_t>(std::lround(std::log2(hz / 20.0) * 377.0 / kOctaves));
}
float hertzAt(int32_t column) { return static_cast<float>(20.0 * std::exp2(column * kOctaves / 377.0)); }

class SpectrumControls : public testing::Test {
protected:
    static Point at(int32_t column, int32_t row = 80) { return kPlace.corner() + Point{column, row}; }
    /// Columns with a dotted line of full height.
    std::vector<int32_t> lines()
    {
        std::vector<int32_t> found;
        const Bitmap shot = desk.shot();
        for (int32_t column = 0; column < kPlace.width(); ++column) {
            int32_t row = 0;
            while (row < kPlace.height() && pixel(shot, at(column, row)) == 0xFFFFFF) row += 2;
            if (row >= kPlace.height()) found.push_back(column);
        }
        return found;
    }

    Session session;
    Desk &desk = *session.desk;
    const int32_t low = columnOf(120), mid = columnOf(2000), high = columnOf(10000); // initial lines
};

using Columns = std::vector<int32_t>;

TEST_F(SpectrumControls, DraggingALineSetsItsCutoff)
{
    EXPECT_EQ(lines(), (Columns{low, mid, high}));
    desk.moveTo(at(mid + 3));
    desk.press();
    EXPECT_EQ(session.told(), "b2");
    EXPECT_EQ(session.focused(), &control("mid cutoff"));
    EXPECT_TRUE(session.editing(2));
    desk.moveTo(at(mid + 3 - 40, 20));
    EXPECT_EQ(session.told(), "v2");
    EXPECT_NEAR(session.value(2), hertzAt(mid - 40), 0.01f * hertzAt(mid - 40));
    EXPECT_NEAR(session.lastTold(2), session.value(2), 0.01f);
    EXPECT_EQ(lines(), (Columns{low, mid - 40, high}));
    EXPECT_TRUE(session.showsValue(control("mid cutoff")));

    desk.moveTo(at(0)); // beyond the low line
    EXPECT_NEAR(session.value(2), hertzAt(low + 10), 0.01f);
    desk.moveTo(at(600, -50));
    EXPECT_NEAR(session.value(2), hertzAt(high - 10), 1.0f);
    desk.release();
    EXPECT_EQ(session.told(), "v2 e2");
    EXPECT_FALSE(session.editing(2));

    desk.drag(at(low), at(-30));
    EXPECT_FLOAT_EQ(session.value(1), 20.0f) << "exactly the end of the axis";
    desk.drag(at(high), at(500));
    EXPECT_FLOAT_EQ(session.value(3), 20000.0f);
    EXPECT_EQ(session.told(), bracketed(1) + " " + bracketed(3));
}

TEST_F(SpectrumControls, ResetsKeepCutoffsInOrder)
{
    session.put(1, 3000.0f);
    session.put(2, 5000.0f);
    session.told();
    desk.click(at(columnOf(5000)), {kKeyAlt});
    EXPECT_EQ(session.told(), bracketed(1, 2))
        << "the lower cutoff is above the default and must be reset, too";
    EXPECT_FLOAT_EQ(session.value(1), 120.0f);
    EXPECT_FLOAT_EQ(session.value(2), 2000.0f);
    session.put(3, 15000.0f);
    session.told();
    desk.moveTo(at(columnOf(15000)));
    desk.doubleClick();
    EXPECT_EQ(session.told(), "b3 e3 b3 v3 e3");
    EXPECT_FLOAT_EQ(session.value(3), 10000.0f);
    EXPECT_TRUE(session.showsField(control("high cutoff"), "10000"));
    EXPECT_EQ(lines(), (Columns{low, mid, high}));
}

} // namespace
