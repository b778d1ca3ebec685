#include <gtest/gtest.h>

#include <cmath>

#include "apps/tessarine/History.h"
#include "tests/signals/Signals.h"

namespace {

TEST(History, LosesNoExtremeAndNoFrameHoweverLongItGets)
{
    App::History history;
    Signals::Random random(11);
    constexpr uint64_t kMeasurements = 3 * App::History::kMostColumns + 17;
    float loudest = 0.0f, least = 1.0f;
    for (uint64_t i = 0; i < kMeasurements; ++i) {
        App::Column measured;
        measured.frames = 441;
        measured.peakOut = random.real(0.0, 1.0);
        measured.leastGain[2] = random.real(0.1, 1.0);
        measured.squaresIn = 0.25 * 441;
        measured.gainDbFrames[2] = -6.0 * 441;
        loudest = std::max(loudest, measured.peakOut);
        least = std::min(least, measured.leastGain[2]);
        history.add(measured);
    }
    ASSERT_LE(history.columns().size(), App::History::kMostColumns);
    ASSERT_GE(history.columns().size(), App::History::kMostColumns / 2);
    App::Column sum;
    for (const App::Column &column : history.columns()) {
        sum.merge(column);
        EXPECT_DOUBLE_EQ(0.5, column.rmsIn());
        EXPECT_DOUBLE_EQ(-6.0, column.meanGainDb(2));
    }
    for (const App::Column *all : {static_cast<const App::Column *>(&sum), &history.total()}) {
        EXPECT_EQ(441 * kMeasurements, all->frames);
        EXPECT_EQ(loudest, all->peakOut);
        EXPECT_EQ(least, all->leastGain[2]);
    }
}

TEST(History, ColumnsKeepTheOrderOfTimeAndAnEvenWidth)
{
    App::History history;
    constexpr size_t kMeasurements = App::History::kMostColumns * 4 + 3;
    for (size_t i = 0; i < kMeasurements; ++i) {
        App::Column measured;
        measured.frames = 1;
        measured.peakIn = static_cast<float>(i);
        history.add(measured);
    }
    const auto &columns = history.columns();
    uint64_t end = 0;
    for (size_t i = 0; i < columns.size(); ++i) {
        end += columns[i].frames;
        EXPECT_EQ(static_cast<float>(end - 1), columns[i].peakIn); // the peak of a ramp is its last value
        if (i + 1 < columns.size()) {
            EXPECT_EQ(columns[0].frames, columns[i].frames);
        }
    }
    EXPECT_EQ(kMeasurements, end);
}

} // namespace
