#include "tests/editor/Session.h"
#include "ui/draw/GlyphStrip.h"

namespace {

struct Bar {
    int32_t segments = 0, peak = 0;
    bool over = false;
};

/// Expected bar for a constant level in dBFS, on a scale of 60 dB.
Bar steady(int32_t segments, double db)
{
    const auto segment = static_cast<int32_t>(std::lround((db + 60.0) / 60.0 * (segments + 1)));
    return {std::clamp(segment, 0, segments), std::clamp(segment, 0, segments)};
}

constexpr int32_t kOutputSegments = 47, kBandSegments = 38;
const double kSlopeDb = 20.0 * std::log10(1.0 + 1.0 / 16.0); // loss at 1 kHz, an octave below the cutoff

class Meters : public testing::Test {
protected:
    testing::AssertionResult showsMeter(Point corner, Bar left, Bar right)
    {
        const bool output = corner == kOutputCorner;
        const int32_t height = output ? 150 : 123;
        const String lit = output ? "LevelMeter_Large_On.png" : "LevelMeter_Small_On.png";
        Picture wanted(22, height);
        wanted.draw(output ? "LevelMeter_Large_Off.png" : "LevelMeter_Small_Off.png");
        const auto light = [&](const Rect &part) { wanted.drawPart(lit, part, part.corner()); };
        for (const auto &[bar, x] : {std::pair{left, 2}, std::pair{right, 12}}) {
            light(Rect::at({x, height - 3 * bar.segments - 2}, 8, 3 * bar.segments));
            if (bar.peak > 0) light(Rect::at({x, height - 3 * bar.peak - 2}, 8, 3));
            if (bar.over) light(Rect::at({x + 2, 2}, 4, 2));
        }
        return wanted.isShown(desk.shot(), corner);
    }
    testing::AssertionResult showsOutput(Bar left, Bar right)
    {
        return showsMeter(kOutputCorner, left, right);
    }
    testing::AssertionResult showsBand(int32_t band, Bar left, Bar right)
    {
        return showsMeter({7 + 104 * band + 6, 268}, left, right);
    }
    testing::AssertionResult showsReduction(int32_t band, int32_t bar, int32_t peak)
    {
        Picture wanted(8, 123);
        wanted.draw("GainReductionMeter_Off.png");
        const auto light = [&](int32_t row, int32_t rows) {
            wanted.drawPart("GainReductionMeter_On.png", Rect::at({2, row}, 4, rows), {2, row});
        };
        light(2, 5 * bar);
        if (peak > 0) light(5 * peak + 2, 5);
        return wanted.isShown(desk.shot(), {7 + 104 * band + 69, 268});
    }
    testing::AssertionResult showsReadout(const char *colour, std::string_view text)
    {
        Picture wanted(38, 10);
        wanted.drawGround(Rect::at({477, 39}, 38, 10));
        wanted.drawNumber(String("LevelMeterReadout_Numbers_%1.png").arg(colour), text,
                          {(38 - UI::Native::GlyphStrip::textWidth(text)) / 2, 1});
        return wanted.isShown(desk.shot(), {477, 39});
    }
    void tick() { desk.wait(kTickMs); }
    /// Plays a tone until its onset no longer affects the meters.
    void playSteadily(double db, double rightDb)
    {
        constexpr uint32_t kFrames = 441 * 80; // whole periods, to repeat without a click
        Audio sound = Signals::sine(HostedEffect::kRate, 1000.0, kFrames, db);
        sound.right = Signals::sine(HostedEffect::kRate, 1000.0, kFrames, rightDb).right;
        session.play(sound);
        desk.wait(14 * kTickMs); // longer than the peak hold
        session.play(sound);
        tick();
    }

    static constexpr uint32_t kTickMs = 33;
    static constexpr Point kOutputCorner{485, 51};
    Session session;
    Desk &desk = *session.desk;
};

TEST_F(Meters, ReadoutShowsThePeakAndClipLightHoldsUntilClicked)
{
    playSteadily(-30.0, -5.0);
    EXPECT_TRUE(showsReadout("Yellow", "-5.0"));
    session.put(0, 8.0f); // output gain, after the limiter
    playSteadily(-30.0, -5.0);
    EXPECT_TRUE(showsReadout("Red", "3.0"));
    EXPECT_TRUE(showsOutput(steady(kOutputSegments, -22.0), {48, 48, true}));
    session.put(0, 0.0f);
    playSteadily(-30.0, -20.0);
    const Bar left = steady(kOutputSegments, -30.0);
    EXPECT_TRUE(showsOutput(left, {48 - 15, steady(kOutputSegments, -20.0).peak, true})) << "clip light held";
    desk.click(kOutputCorner + Point{10, 70});
    EXPECT_TRUE(showsOutput(left, {48 - 15, 48 - 15})) << "clip light reset by the click";
}

TEST_F(Meters, BarsFallOneSegmentPerTick)
{
    playSteadily(-12.0, -12.0);
    const int32_t full = steady(kBandSegments, -12.0 - kSlopeDb).peak;
    for (int32_t fallen = 1; fallen <= 12; ++fallen) {
        tick();
        EXPECT_TRUE(showsBand(1, {full - fallen, full}, {full - fallen, full})) << fallen;
    }
    tick(); // the 400 ms peak hold ends
    EXPECT_TRUE(showsBand(1, {full - 13, 0}, {full - 13, 0}));
    desk.wait(kTickMs * 40);
    EXPECT_TRUE(showsBand(1, {}, {}));
}

TEST_F(Meters, GainReductionGrowsDownwardsAndHoldsItsPeak)
{
    session.put(11, static_cast<float>(-32.0 - kSlopeDb)); // threshold 20 dB below the tone in this band
    session.put(19, 4.0f);                                 // ratio: 15 dB of gain reduction
    session.put(23, 0.0f);
    playSteadily(-12.0, -12.0);
    int32_t bar = 11; // 15 dB are 12 segments on the scale of 30 dB
    while (bar < 14 && !showsReduction(1, bar, bar)) ++bar;
    EXPECT_NEAR(bar, 12, 1);
    EXPECT_TRUE(showsReduction(0, 0, 0));
    for (int32_t fallen = 1; fallen <= 7; ++fallen) {
        tick();
        EXPECT_TRUE(showsReduction(1, bar - fallen, bar)) << fallen;
    }
    tick(); // the 250 ms peak hold ends
    EXPECT_TRUE(showsReduction(1, bar - 8, 0));
}

} // namespace
