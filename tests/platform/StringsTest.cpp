#include <string>

#include <gtest/gtest.h>

#include "tests/platform/TestWindowSystem.h"

namespace {

/// Blanks that an editor likes to cut, letters of two and three bytes, letters before hexadecimal digits, and
/// the ends of each block.
TEST(Strings, KeepEveryCharacter)
{
    constexpr uint32_t kFirst = 377, kRows = 45;
    enum : uint32_t { english, japanese, german, french, italian, spanish, languages };
    const struct {
        uint32_t language, row;
        std::u16string text;
    } rows[] = {
        {english, 0, u"band 1"},
        {english, 28, u"Band 1 Gain"},
        {english, 44, u"Limiter Bypass"},
        {japanese, 0, u"\u30D0\u30F3\u30C9 1"},
        {japanese, 12, u"\u3057\u304D\u3044\u5024 : "},
        {japanese, 17, u"\u3057\u304D\u3044\u5024 "},
        {german, 4, u"Ausgangsverst?rkung"},
        {german, 7, u"\u4EA4\u53C9:"},
        {french, 7, u" "},
        {french, 10, u"\u00E9lev\u00E9 :"},
        {french, 27, u"Fr\u00E9q. coupure \u00E9lev\u00E9e"},
        {french, 36, u"\u5FFD\u7565\u9891\u6BB5 1"},
        {italian, 2, u"\u9891\u6BB5 3"},
        {spanish, 25, u"L\u00EDmite bajo"},
        {spanish, 44, u"Omisi\u00F3n de limitador"},
    };
    for (const auto &[language, row, text] : rows)
        EXPECT_EQ(testWindowSystem().loadString(kFirst + kRows * language + row), text)
            << "language " << language << ", row " << row;
    for (const uint32_t id : {0u, kFirst - 1, kFirst + kRows * languages, 65535u})
        EXPECT_TRUE(testWindowSystem().loadString(id).empty()) << id;
}

} // namespace
