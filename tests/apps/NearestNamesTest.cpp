#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/tessarine/console/Text.h"

using testing::ElementsAre;

TEST(NearestNames, MatchTypingErrorsAndPartsInAnyCase)
{
    const std::vector<std::string> names = {"Gain", "Band 1 Gain", "Band 1 Ratio", "Limiter Attack",
                                            "Limiter Ratio"};
    EXPECT_THAT(App::nearestNames("Limiter Atack", names, 1), ElementsAre("Limiter Attack"));
    EXPECT_THAT(App::nearestNames("band1ratio", names, 1), ElementsAre("Band 1 Ratio"));
    EXPECT_THAT(App::nearestNames("RATIO", names, 2), ElementsAre("Band 1 Ratio", "Limiter Ratio"));
    EXPECT_THAT(App::nearestNames("", names, 9), testing::SizeIs(names.size()));
    EXPECT_TRUE(App::sameName("Band 1 Ratio", "bAND 1 rATIO") && !App::sameName("Gain", "Gain "));
}
