#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

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

TEST(Quantity, AcceptsItsUnitAndRelatedOnes)
{
    const std::tuple<const char *, const char *, std::optional<double>> cases[] = {
        {"3:1", "x:1", 3},         {"3 x:1", "x:1", 3},          {"1k", "Hz", 1000},
        {" 1.2 khz ", "Hz", 1200}, {"1.005 kHz", "Hz", 1005},    {"440 Hz", "Hz", 440},
        {"0.1 s", "ms", 100},      {"10ms", "ms", 10},           {"250 ms", "s", 0.25},
        {"-14LUFS", "LUFS", -14},  {"-1dBTP", "dBTP", -1},       {"-1 dB", "dBTP", -1},
        {"+2.5", "dB", 2.5},       {"3:2", "x:1", std::nullopt}, {"1 k", "dB", std::nullopt},
        {"k", "Hz", std::nullopt}, {"inf", "dB", std::nullopt},  {"1,5", "dB", std::nullopt}};
    for (const auto &[text, unit, value] : cases) EXPECT_EQ(value, App::readQuantity(text, unit)) << text;
}

TEST(ValidUtf8, ReplacesInvalidBytesAndControlCharacters)
{
    EXPECT_EQ("aß→\U0001F39A", App::validUtf8("aß→\U0001F39A"));
    const std::string mark = "\uFFFD";
    // a stray byte, overlong forms, a surrogate, a noncharacter, above U+10FFFF, and a cut character
    for (const char *bytes : {"\xFC", "\n", "\x7F", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80",
                              "\xEF\xBF\xBE", "\xC2\x85", "\xF4\x90\x80\x80", "\xE2\x86"}) {
        std::string marks;
        for (size_t i = 0; i < std::strlen(bytes); ++i) marks += mark;
        EXPECT_EQ("a" + marks + "b", App::validUtf8(std::string("a") + bytes + "b"));
    }
}
