#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/tessarine/NearestNames.h"

using testing::ElementsAre;

namespace {

const std::vector<std::string> kNames = {"Gain", "Band 1 Gain", "Band 1 Ratio", "Limiter Attack",
                                         "Limiter Ratio"};

TEST(NearestNames, ComesFromTypingErrorsAndFromParts)
{
    EXPECT_THAT(App::nearestNames("Limiter Atack", kNames, 1), ElementsAre("Limiter Attack"));
    EXPECT_THAT(App::nearestNames("band1ratio", kNames, 1), ElementsAre("Band 1 Ratio"));
    EXPECT_THAT(App::nearestNames("RATIO", kNames, 2), ElementsAre("Band 1 Ratio", "Limiter Ratio"));
    EXPECT_THAT(App::nearestNames("", kNames, 9), testing::SizeIs(kNames.size()));
}

TEST(NearestNames, CaseMakesNoDifference)
{
    EXPECT_TRUE(App::sameName("Band 1 Ratio", "bAND 1 rATIO"));
    EXPECT_FALSE(App::sameName("Gain", "Gain "));
}

} // namespace
