#include <gmock/gmock.h>
#include <set>

#include "tests/editor/HostedEffect.h"
#include "tests/editor/OffscreenDesk.h"

using Paint = Platform::OffscreenWindowSystem::PaintRecord;

namespace {

struct Repainting : ::testing::Test {
    std::vector<Paint> takePaints() { return std::exchange(system().paints, {}); }
    Platform::OffscreenWindowSystem &system() { return static_cast<OffscreenDesk &>(*hosted.desk).system; }
    std::set<std::string> titlesOf(const std::vector<Paint> &paints)
    {
        std::set<std::string> titles;
        for (const Paint &paint : paints) titles.insert(system().title(paint.window));
        return titles;
    }
    /// Until all that falls has fallen.
    void settle()
    {
        hosted.play(Signals::silence(2 * HostedEffect::kRate));
        hosted.desk->wait(20000);
        takePaints();
    }

    HostedEffect hosted;
};

} // namespace

TEST_F(Repainting, IsTheSpectrumAloneWhenNothingMoves)
{
    settle();
    hosted.desk->wait(330);
    const std::vector<Paint> paints = takePaints();
    EXPECT_THAT(titlesOf(paints), ::testing::ElementsAre("Multiband Spectrum"));
    EXPECT_LE(paints.size(), 10u) << "one for each tick";
}

TEST_F(Repainting, IsTheMetersOwnRectangleWhenASoundComes)
{
    settle();
    hosted.play(Signals::sine(HostedEffect::kRate, 1000, 4410, -12));
    hosted.desk->wait(33);
    const std::vector<Paint> paints = takePaints();
    std::set<Platform::WindowHandle> seen;
    for (const Paint &paint : paints) {
        EXPECT_TRUE(seen.insert(paint.window).second) << system().title(paint.window) << " twice in a tick";
        EXPECT_NE(paint.window, hosted.editor().window()) << "the ground stays";
        const Rect bounds = Rect::at({}, system().screenRect(paint.window).width(),
                                     system().screenRect(paint.window).height());
        EXPECT_EQ(paint.area.intersected(bounds), paint.area);
        EXPECT_LT(paint.area.width() * paint.area.height(), 400 * 170);
    }
    EXPECT_GT(seen.size(), 1u);
    EXPECT_LT(seen.size(), 12u) << "meters, the readout and the spectrum";
}
