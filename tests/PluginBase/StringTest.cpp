#include "PluginBase/Util/String.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

TEST(String, NullStringReadsAsEmptyButStaysNull)
{
    const String null, empty("");
    for (const String &text : {null, String(nullptr), String(nullptr, 4u)}) {
        EXPECT_TRUE(text.isNull() && text.isEmpty() && text.length() == 0 && text.at(0) == '\0');
        EXPECT_STREQ(text.c_str(), "");
        EXPECT_TRUE(text == empty && !(text < empty));
    }
    EXPECT_FALSE(empty.isNull() || String("abc", 0).isNull() || null.mid(0).isNull());
    EXPECT_TRUE(null.left(3).isNull());
    EXPECT_EQ(null + "x", "x");
    EXPECT_EQ(String("abc", 2), "ab");
    EXPECT_EQ(String("abc", 9), "abc");
}

TEST(String, ChangingASharedStringLeavesOtherCopiesUnchanged)
{
    const String source("  Gain ");
    String longer = source, shorter = source;
    EXPECT_TRUE(longer.sharesTextWith(source));
    longer += "dB";
    shorter.truncate(4);
    EXPECT_TRUE(longer == "  Gain dB" && shorter == "  Ga" && source == "  Gain ");
}

TEST(String, SubstringsStayInBounds)
{
    const std::string plain = "abcdef";
    const String text(plain.c_str());
    for (uint32_t n : {0u, 2u, 4u, 6u, 7u, 0xFFFFFFFFu}) {
        const uint32_t inside = std::min(n, 6u);
        EXPECT_EQ(text.left(n), plain.substr(0, n).c_str());
        EXPECT_EQ(text.right(n), plain.substr(6 - inside).c_str());
        EXPECT_EQ(text.mid(n), plain.substr(inside).c_str());
        for (uint32_t length : {0u, 1u, 3u, 0xFFFFFFFFu})
            EXPECT_EQ(text.mid(n, length), plain.substr(inside, length).c_str());
    }
    EXPECT_TRUE(text.at(5) == 'f' && text.at(6) == '\0');
    EXPECT_EQ(String("a/b/c").replace('/', '-'), "a-b-c");
}

TEST(String, WhitespaceIncludesControlsAndNoBreakSpace)
{
    const std::tuple<const char *, const char *, const char *> kCases[] = {
        {"  a \t\n b\xA0", "a \t\n b", "a b"},
        {"\v\f\r\xA0 ", "", ""},
        {"a\xA0\xA0.", "a\xA0\xA0.", "a ."},
        {"\x08 a\x0E", "\x08 a\x0E", "\x08 a\x0E"}};
    for (const auto &[text, trimmed, simplified] : kCases) {
        EXPECT_EQ(String(text).trimmed(), trimmed);
        EXPECT_EQ(String(text).simplified(), simplified);
    }
}

TEST(String, FindsForwardAndBackward)
{
    const OptionalIndex absent;
    const std::string plain = "aXbxa";
    const String text(plain.c_str());
    const auto index = [&](size_t at) {
        return at == std::string::npos ? absent : OptionalIndex(uint32_t(at));
    };
    for (char c : {'a', 'x', 'X', 'q'})
        for (uint32_t from = 0; from < 5; ++from) {
            EXPECT_EQ(text.find(c, from), index(plain.find(c, from))) << c << from;
            EXPECT_EQ(text.findLast(c, from), index(plain.rfind(c, from))) << c << from;
        }
    EXPECT_TRUE(text.find('a', 5) == absent && String().findLast('a') == absent);
    EXPECT_EQ(text.findLast('a'), OptionalIndex(4));
}

TEST(String, ArgReplacesTheLowestMarkerOnce)
{
    const std::tuple<const char *, const char *, const char *> kCases[] = {{"%2 then %1", "a", "%2 then a"},
                                                                           {"abc", "x", "abcx"},
                                                                           {"%1 and %1", "x", "x and %1"},
                                                                           {"%10", "x", "x0"},
                                                                           {"50%", "x", "50%x"},
                                                                           {"%9%", "x", "x%"},
                                                                           {"%a %5", "", "%a "}};
    for (const auto &[text, value, result] : kCases) EXPECT_EQ(String(text).arg(value), result) << text;
    EXPECT_EQ(String("%1 %2").arg("%3").arg("b").arg("c"), "c b") << "a value may capture a later argument";
    EXPECT_EQ(String("%1").arg(-1, 16), "FFFFFFFF");
    EXPECT_EQ(String("%1 dB").arg(-1.25f, 1), "-1.2 dB");
}

TEST(String, FitToLengthPicksTheLongestFittingAlternative)
{
    const std::tuple<const char *, uint32_t, const char *> kCases[] = {{"Long Name\nShort", 8, "Short"},
                                                                       {"Long Name\nLonger", 4, "Long"},
                                                                       {"ab\nabcd\nabc", 0, "abcd"},
                                                                       {"ab\ncd", 2, "ab"},
                                                                       {"\n\nx\n", 3, "x"},
                                                                       {"\nlong", 2, ""}};
    for (const auto &[text, length, result] : kCases)
        EXPECT_EQ(fitToLength(text, length, '\n'), result) << text;
}

} // namespace
