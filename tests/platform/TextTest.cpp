#include <algorithm>
#include <set>
#include <span>
#include <string>
#include <vector>

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include "platform/offscreen/OffscreenWindowSystem.h"

namespace {

constexpr int32_t kOverhang = 1; // pixels that a letter may extend beyond its width

class Text : public testing::Test {
protected:
    Platform::FontRef font(int32_t size, const std::string &face = "Arial", bool bold = false)
    {
        return system.createFont({size, bold, face});
    }

    /// Draws text on a new bitmap and returns its pixels. Shape: [height][width]
    std::vector<uint32_t> draw(const Platform::FontRef &with, std::u16string_view text, Point at,
                               bool alignRight = false)
    {
        Platform::Bitmap bitmap(width, height, Platform::Bitmap::Format::colour);
        const std::span pixels(static_cast<uint32_t *>(bitmap.pixels()), static_cast<size_t>(width * height));
        std::ranges::fill(pixels, background);
        system.drawText(bitmap, *with, colour, at, text, alignRight);
        return {pixels.begin(), pixels.end()};
    }

    /// Bounding box of the pixels that differ from the background. `right` and `bottom` are inclusive.
    Rect ink(const std::vector<uint32_t> &pixels) const
    {
        Rect found{width, -1, height, -1};
        for (int32_t i = 0; i < width * height; ++i) {
            const int32_t x = i % width, y = i / width;
            if (pixels[static_cast<size_t>(i)] != background)
                found = {std::min(found.left, x), std::max(found.right, x), std::min(found.top, y),
                         std::max(found.bottom, y)};
        }
        return found;
    }

    Platform::OffscreenWindowSystem system;
    int32_t width = 300, height = 40;
    uint32_t background = 0xFFFFFF, colour = 0;
};

TEST_F(Text, StaysWithinItsMeasuredSizeInEveryLanguage)
{
    const auto arial = font(-10), gothic = font(-10, "MS UI Gothic");
    for (uint32_t id = 377; id <= 646; ++id) {
        const std::u16string text = system.loadString(id);
        for (const auto &face : {arial, gothic}) {
            const Platform::TextSize size = system.measureText(*face, text);
            const Rect drawn = ink(draw(face, text, {20, 10}));
            if (text == u" ") {
                EXPECT_GT(size.width, 0);
                EXPECT_TRUE(drawn.isEmpty());
                continue;
            }
            EXPECT_GE(drawn.left, 20 - kOverhang) << id;
            EXPECT_LT(drawn.right, 20 + size.width + kOverhang) << id;
            EXPECT_GE(drawn.top, 10) << id;
            EXPECT_LT(drawn.bottom, 10 + size.height) << id;
        }
    }
}

TEST_F(Text, HasAGlyphForEveryEditorCharacter)
{
    std::set<char16_t> letters;
    for (uint32_t id = 377; id <= 646; ++id)
        for (const char16_t letter : system.loadString(id)) letters.insert(letter);
    EXPECT_GT(letters.size(), 100u);
    for (const char *const face : {"Arial", "MS UI Gothic"}) {
        const auto large = font(-24, face);
        const auto unknown = draw(large, u"\uE123", {4, 4});
        std::set<std::vector<uint32_t>> pictures;
        for (const char16_t letter : letters) {
            const auto picture = draw(large, std::u16string(1, letter), {4, 4});
            EXPECT_TRUE(picture != unknown && pictures.insert(picture).second)
                << face << ", letter " << static_cast<unsigned>(letter);
        }
    }
}

// Compares text at the edges of a small bitmap with the same text on a large one.
TEST_F(Text, IsClippedAtTheBitmapEdges)
{
    const auto face = font(-20);
    const std::u16string text = u"\u9891gAj";
    constexpr int32_t kWide = 160, kSmall = 16, kFar = INT32_MAX;
    width = kWide;
    height = 80;
    const auto whole = draw(face, text, {60, 30});
    width = height = kSmall;
    for (const Point corner : {Point{50, 25}, Point{70, 40}, Point{90, 45}, Point{64, 36}}) {
        const auto part = draw(face, text, Point{60, 30} - corner);
        for (int32_t i = 0; i < kSmall * kSmall; ++i) {
            const int32_t x = corner.x + i % kSmall, y = corner.y + i / kSmall;
            ASSERT_EQ(part[static_cast<size_t>(i)], whole[static_cast<size_t>(y * kWide + x)]);
        }
    }
    for (const Point far : {Point{kFar, 0}, Point{0, kFar}, Point{-kFar, -kFar}, Point{kFar, kFar}})
        for (const bool right : {false, true}) EXPECT_TRUE(ink(draw(face, text, far, right)).isEmpty());
}

TEST_F(Text, StopsAtNullAndAt1024CharactersAndJoinsSurrogatePairs)
{
    const auto face = font(-10);
    const auto widthOf = [&](std::u16string_view text) { return system.measureText(*face, text).width; };
    EXPECT_EQ(widthOf(std::u16string(5000, u'i')), 1024 * widthOf(u"i"));
    EXPECT_EQ(widthOf(std::u16string_view(u"ii\0iii", 6)), 2 * widthOf(u"i"));
    EXPECT_EQ(draw(face, std::u16string_view(u"ii\0iii", 6), {0, 0}), draw(face, u"ii", {0, 0}));
    EXPECT_EQ(draw(face, u"ii", {200, 5}, true), draw(face, u"ii", {200 - widthOf(u"ii"), 5}));
    EXPECT_EQ(widthOf(std::u16string{0xDC00, 0xD800}), 2 * widthOf(u"\uFFFD"));
    EXPECT_LT(widthOf(u"\U0001D11E"), 2 * widthOf(u"\uFFFD"));
}

TEST_F(Text, HasTheRequestedHeightInEveryTypeface)
{
    EXPECT_EQ(system.measureText(*font(-10), u"").height, 13);
    EXPECT_NEAR(system.measureText(*font(30, "No Such Face"), u"").height, 29, 1);
    for (const int32_t size : {0, INT32_MIN}) EXPECT_GT(system.measureText(*font(size), u"x").width, 0);
    EXPECT_GT(system.measureText(*font(-12, "Arial", true), u"limiter").width,
              system.measureText(*font(-12), u"limiter").width);
}

TEST_F(Text, BlendsItsColourWithTheBackground)
{
    background = 0x000080;
    colour = 0x800000;
    bool full = false, partly = false;
    for (const uint32_t pixel : draw(font(-30), u"M", {0, 0})) {
        const uint32_t red = pixel >> 16, blue = pixel & 0xFF;
        EXPECT_EQ(pixel & 0xFF00FF00, 0u);
        EXPECT_EQ(red + blue, 128u); // rounded, not truncated
        full |= red == 128;
        partly |= red > 0 && red < 128;
    }
    EXPECT_TRUE(full && partly);
}

TEST_F(Text, CreatesNoFontIfNoneIsInstalled)
{
    FcConfig *const before = FcConfigReference(nullptr), *const empty = FcConfigCreate();
    FcConfigSetCurrent(empty);
    EXPECT_EQ(font(-10), nullptr);
    FcConfigSetCurrent(before);
    FcConfigDestroy(before);
    FcConfigDestroy(empty);
    EXPECT_NE(font(-10), nullptr);
}

} // namespace
