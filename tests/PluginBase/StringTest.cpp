#include "PluginBase/Util/String.h"
#include <gtest/gtest.h>

namespace {

TEST(String, NullTextReadsAsEmptyButWasNeverGiven)
{
    const String null, fromNull(nullptr), fromNullCut(nullptr, 4u), empty("");
    for (const String &text : {null, fromNull, fromNullCut}) {
        EXPECT_TRUE(text.isNull());
        EXPECT_TRUE(text.isEmpty());
        EXPECT_EQ(text.length(), 0u);
        EXPECT_STREQ(text.c_str(), "");
        EXPECT_EQ(text.at(0), '\0');
        EXPECT_TRUE(text == empty);
        EXPECT_FALSE(text < empty);
    }
    EXPECT_FALSE(empty.isNull());
    EXPECT_TRUE(null.left(3).isNull());
    EXPECT_FALSE(null.mid(0).isNull());
    EXPECT_EQ(null + "x", "x");
    EXPECT_EQ(null.trimmed(), "");
    EXPECT_EQ(null.replace('a', 'b'), "");
}

TEST(String, ConstructorsCutAtLengthAndAtZero)
{
    EXPECT_EQ(String("abc", 2), "ab");
    EXPECT_EQ(String("abc", 9), "abc");
    EXPECT_EQ(String("a\0c", 3), "a");
    EXPECT_FALSE(String("abc", 0).isNull());
    EXPECT_EQ(String("abc", 0), "");
    EXPECT_EQ(String('x'), "x");
}

TEST(String, OrderIsByUnsignedBytes)
{
    EXPECT_LT(String("B"), String("a"));
    EXPECT_LT(String("a"), "\xE4");
    EXPECT_LT(String("a"), "ab");
    EXPECT_GT("b", String("a"));
    const char *const noText = nullptr;
    EXPECT_FALSE(String() == noText);
    EXPECT_GT(String(), noText);
}

TEST(String, WhoeverChangesASharedTextLeavesTheOthersAlone)
{
    const String source("  Gain ");
    const struct {
        const char *name;
        void (*change)(String &);
        const char *result;
    } kChanges[] = {
        {"append", [](String &text) { text += "dB"; }, "  Gain dB"},
        {"truncate", [](String &text) { text.truncate(4); }, "  Ga"},
        {"setText", [](String &text) { text.setText(std::make_shared<const std::string>("new")); }, "new"},
        {"assign", [](String &text) { text = "other"; }, "other"},
        {"null", [](String &text) { text.setText(nullptr); }, ""},
    };
    for (const auto &row : kChanges) {
        SCOPED_TRACE(row.name);
        String copy = source;
        EXPECT_TRUE(copy.sharesTextWith(source));
        row.change(copy);
        EXPECT_EQ(copy, row.result);
        EXPECT_EQ(source, "  Gain ");
    }
}

TEST(String, SharesWhereNothingChanges)
{
    const String text("Gain");
    String appended = text, adopting;
    appended += "";
    adopting += text;
    String truncated = text;
    truncated.truncate(4);
    for (const String &same : {text.trimmed(), text.left(9), appended, adopting, truncated})
        EXPECT_TRUE(same.sharesTextWith(text)) << same.c_str();
    EXPECT_FALSE(String(" Gain").trimmed().sharesTextWith(text));
}

TEST(String, PiecesStayInsideTheText)
{
    const String text("abcdef");
    const OptionalIndex all;
    EXPECT_EQ(text.left(2), "ab");
    EXPECT_EQ(text.left(7), "abcdef");
    EXPECT_EQ(text.right(2), "ef");
    EXPECT_EQ(text.right(7), "abcdef");
    EXPECT_EQ(text.mid(2, 3), "cde");
    EXPECT_EQ(text.mid(2, all), "cdef");
    EXPECT_EQ(text.mid(2, 0), "");
    EXPECT_EQ(text.mid(4, 0xFFFFFFFF), "ef");
    EXPECT_EQ(text.mid(6), "");
    EXPECT_EQ(text.mid(0xFFFFFFFF, 1), "");
    EXPECT_EQ(text.at(5), 'f');
    EXPECT_EQ(text.at(6), '\0');
    EXPECT_EQ(String("a/b/c").replace('/', '-'), "a-b-c");
}

TEST(String, WhitespaceIsBlankControlsAndNoBreakSpace)
{
    const struct {
        const char *text, *trimmed, *simplified;
    } kCases[] = {
        {"a b", "a b", "a b"},
        {"  a \t\n b\xA0", "a \t\n b", "a b"},
        {"\v\f\r\xA0 ", "", ""},
        {"a\xA0\xA0"
         "b",
         "a\xA0\xA0"
         "b",
         "a b"},
        {"\x08 a\x0E", "\x08 a\x0E", "\x08 a\x0E"},
    };
    for (const auto &row : kCases) {
        EXPECT_EQ(String(row.text).trimmed(), row.trimmed);
        EXPECT_EQ(String(row.text).simplified(), row.simplified);
    }
}

TEST(String, FindsForwardAndBackward)
{
    const OptionalIndex absent;
    const String text("aXbxa");
    EXPECT_EQ(text.find('x'), OptionalIndex(3));
    EXPECT_EQ(text.find('x', 0, false), OptionalIndex(1));
    EXPECT_EQ(text.find('X', 2, false), OptionalIndex(3));
    EXPECT_EQ(text.find('a', 4), OptionalIndex(4));
    EXPECT_EQ(text.find('a', 5), absent);
    EXPECT_EQ(text.findLast('a'), OptionalIndex(4));
    EXPECT_EQ(text.findLast('a', 3), OptionalIndex(0));
    EXPECT_EQ(text.findLast('X', absent, false), OptionalIndex(3));
    EXPECT_EQ(text.findLast('a', 5), absent);
    EXPECT_EQ(String().findLast('a'), absent);
    EXPECT_EQ(String("\xC4").find('\xE4', 0, false), absent) << "folding is for A to Z alone";
}

TEST(String, ArgReplacesTheLowestMarkerOnce)
{
    const struct {
        const char *text, *value, *result;
    } kCases[] = {
        {"%2 then %1", "a", "%2 then a"},
        {"%2 then a", "b", "b then a"},
        {"abc", "x", "abcx"},
        {"", "x", "x"},
        {"%1 and %1", "x", "x and %1"},
        {"%10", "x", "x0"},
        {"%%1", "x", "%x"},
        {"50%", "x", "50%x"},
        {"%1 %0", "x", "%1 x"},
        {"%9%", "x", "x%"},
        {"%a %5", "", "%a "},
    };
    for (const auto &row : kCases) EXPECT_EQ(String(row.text).arg(row.value), row.result) << row.text;
    EXPECT_EQ(String("%1 %2").arg("%3").arg("b").arg("c"), "c b") << "a value may capture a later argument";
    EXPECT_EQ(String().arg(7), "7");
    EXPECT_EQ(String("%1").arg(-1, 16), "FFFFFFFF");
    EXPECT_EQ(String("%1").arg(-1, 10), "-1");
    EXPECT_EQ(String("%1").arg(4294967295u), "4294967295");
    EXPECT_EQ(String("%1 dB").arg(-1.25f, 1), "-1.2 dB");
}

TEST(String, FitToLengthPicksTheLongestThatFits)
{
    const struct {
        const char *text;
        uint32_t room;
        const char *result;
    } kCases[] = {
        {"Long Name\nShort", 8, "Short"},
        {"Long Name\nLonger", 4, "Long"},
        {"ab\nabcd\nabc", 0, "abcd"},
        {"ab\ncd", 2, "ab"},
        {"\n\nx\n", 3, "x"},
        {"\nlong", 2, ""},
        {"whole", 5, "whole"},
        {"", 3, ""},
    };
    for (const auto &row : kCases) EXPECT_EQ(fitToLength(row.text, row.room, '\n'), row.result) << row.text;
}

} // namespace
