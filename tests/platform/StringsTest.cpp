#include <array>
#include <string>

#include <gtest/gtest.h>

#include "tests/platform/TestWindowSystem.h"

namespace {

constexpr uint32_t kFirst = 377, kRows = 45, kLanguages = 6;
enum Language : uint32_t { english, japanese, german, french, italian, spanish };

struct Row {
    Language language;
    uint32_t row;
    std::u16string text;
};

std::u16string load(uint32_t language, uint32_t row)
{
    return testWindowSystem().loadString(kFirst + kRows * language + row);
}

/// Blanks that an editor likes to cut, letters of two and three bytes, letters before hexadecimal digits, and
/// the ends of each block.
TEST(Strings, KeepEveryCharacter)
{
    const std::array rows = {
        Row{english, 0, u"band 1"},
        Row{english, 12, u"thresh:"},
        Row{english, 28, u"Band 1 Gain"},
        Row{english, 43, u"Band 4 Threshold"},
        Row{english, 44, u"Limiter Bypass"},
        Row{japanese, 0, u"\u30D0\u30F3\u30C9 1"},
        Row{japanese, 8, u"\u4F4E"},
        Row{japanese, 12, u"\u3057\u304D\u3044\u5024 : "},
        Row{japanese, 17, u"\u3057\u304D\u3044\u5024 "},
        Row{japanese, 18, u"\u30DE\u30FC\u30B8\u30F3"},
        Row{japanese, 44, u"\u30EA\u30DF\u30C3\u30BF\u30D0\u30A4\u30D1\u30B9"},
        Row{german, 4, u"Ausgangsverst?rkung"},
        Row{german, 7, u"\u4EA4\u53C9:"},
        Row{german, 21, u"Eingangsspektrum:"},
        Row{german, 23, u"Band-Strg verbind:"},
        Row{french, 7, u" "},
        Row{french, 10, u"\u00E9lev\u00E9 :"},
        Row{french, 16, u"rel\u00E2ch. :"},
        Row{french, 21, u"spectre sur entr\u00E9e :"},
        Row{french, 27, u"Fr\u00E9q. coupure \u00E9lev\u00E9e"},
        Row{french, 36, u"\u5FFD\u7565\u9891\u6BB5 1"},
        Row{italian, 2, u"\u9891\u6BB5 3"},
        Row{italian, 3, u"banda 4"},
        Row{italian, 44, u"Ignora limitatore"},
        Row{spanish, 22, u"limitador Brickwall"},
        Row{spanish, 25, u"L\u00EDmite bajo"},
        Row{spanish, 44, u"Omisi\u00F3n de limitador"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(load(row.language, row.row), row.text)
            << "language " << row.language << ", row " << row.row;
}

TEST(Strings, FillTheirRangeAndNoMore)
{
    for (uint32_t language = 0; language < kLanguages; ++language)
        for (uint32_t row = 0; row < kRows; ++row)
            EXPECT_FALSE(load(language, row).empty()) << "language " << language << ", row " << row;
    for (const uint32_t id : {0u, 1u, kFirst - 1, kFirst + kRows * kLanguages, 65535u})
        EXPECT_TRUE(testWindowSystem().loadString(id).empty()) << id;
}

} // namespace
