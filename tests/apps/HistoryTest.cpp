#include <gtest/gtest.h>

#include "apps/tessarine/render/History.h"
#include "tests/signals/Signals.h"

namespace {

TEST(History, KeepsExtremesAndFrameCountAtAnyLength)
{
    App::History history;
    Signals::Random random(11);
    constexpr uint64_t kMeasurements = 7 * App::History::kMostColumns + 17;
    float least = 1.0f;
    for (uint64_t i = 1; i <= kMeasurements; ++i) {
        App::Column measured{.frames = 441, .peakIn = static_cast<float>(i)};
        measured.leastGain[2] = random.real(0.1, 1.0);
        measured.squaresIn = 0.25 * 441;
        measured.gainDbFrames[2] = -6.0 * 441;
        least = std::min(least, measured.leastGain[2]);
        history.add(measured);
    }
    const auto &columns = history.columns();
    ASSERT_LE(columns.size(), App::History::kMostColumns);
    ASSERT_GE(columns.size(), App::History::kMostColumns / 2);
    App::Column sum;
    for (size_t i = 0; i < columns.size(); ++i) {
        sum.merge(columns[i]);
        EXPECT_EQ(static_cast<float>(sum.frames) / 441, columns[i].peakIn)
            << "the peak of a ramp is its last value";
        EXPECT_TRUE(columns[i].frames == columns[0].frames || i + 1 == columns.size())
            << "columns differ in length";
        EXPECT_DOUBLE_EQ(0.5, columns[i].rmsIn());
        EXPECT_DOUBLE_EQ(-6.0, columns[i].meanGainDb(2));
    }
    for (const App::Column *all : {static_cast<const App::Column *>(&sum), &history.total()}) {
        EXPECT_EQ(441 * kMeasurements, all->frames);
        EXPECT_EQ(static_cast<float>(kMeasurements), all->peakIn);
        EXPECT_EQ(least, all->leastGain[2]);
    }
}

} // namespace
