#include <gtest/gtest.h>

#include <cstring>

#include "ui/native/Surface.h"

using namespace UI::Native;

namespace {

TEST(Surface, HasClearPixelsOfItsSize)
{
    for (const auto &[width, height] : {std::pair{1, 1}, {38, 10}, {547, 488}}) {
        Surface surface(width, height);
        ASSERT_FALSE(surface.isEmpty());
        EXPECT_EQ((Rect{0, width - 1, 0, height - 1}), surface.bounds());
        for (int32_t i = 0; i < width * height; ++i) ASSERT_EQ(0u, surface.pixels()[i]);
    }
}

TEST(Surface, OfBytesHasRowsOfWholeWords)
{
    for (const auto &[width, stride] : {std::pair{1, 4u}, {4, 4u}, {5, 8u}}) {
        Surface surface(width, 3, 1);
        ASSERT_FALSE(surface.isEmpty());
        EXPECT_EQ(stride, surface.stride());
        EXPECT_EQ(nullptr, surface.pixels());
        std::memset(surface.bitmap().pixels(), 1, stride * 3);
    }
}

TEST(Surface, OfImpossibleSizeIsEmpty)
{
    constexpr int32_t kMost = Platform::Bitmap::kMaxSide;
    for (const auto &[width, height] :
         {std::pair{0, 1}, {1, 0}, {-1, 5}, {5, INT32_MIN}, {kMost + 1, 1}, {INT32_MAX, INT32_MAX}}) {
        const Surface surface(width, height);
        EXPECT_TRUE(surface.isEmpty());
        EXPECT_EQ(0u, surface.stride());
        EXPECT_EQ(nullptr, surface.pixels());
        EXPECT_TRUE(surface.bounds().isEmpty());
    }
}

} // namespace
