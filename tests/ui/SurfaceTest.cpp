#include <gtest/gtest.h>

#include <cstring>

#include "tests/ui/Catalogue.h"
#include "ui/native/Pixmap.h"
#include "ui/native/Surface.h"

using namespace UI::Native;

namespace {

TEST(Surface, HasClearPixelsOfItsSize)
{
    for (const auto &[width, height] : {std::pair{1, 1}, {38, 10}, {547, 488}}) {
        Surface surface(width, height);
        ASSERT_FALSE(surface.isEmpty());
        EXPECT_EQ(width, surface.width());
        EXPECT_EQ(height, surface.height());
        EXPECT_EQ(static_cast<uint32_t>(width), surface.stride());
        EXPECT_EQ((Rect{0, width - 1, 0, height - 1}), surface.bounds());
        for (int32_t i = 0; i < width * height; ++i) ASSERT_EQ(0u, surface.pixels()[i]);
        std::memset(surface.pixels(), 0xA5, size_t{4} * width * height);
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
        EXPECT_EQ(-1, surface.width());
        EXPECT_EQ(-1, surface.height());
        EXPECT_EQ(0u, surface.stride());
        EXPECT_EQ(nullptr, surface.pixels());
        EXPECT_TRUE(surface.bounds().isEmpty());
    }
}

TEST(Surface, LoadsWhatAPixmapLoads)
{
    for (const CatalogueRow &row : catalogue()) {
        SCOPED_TRACE(row.name);
        const PixmapRef pixmap = loadPixmap(row.name.c_str()), again = loadPixmap(row.name.c_str());
        const SurfaceRef surface = loadSurface(row.name.c_str());
        ASSERT_TRUE(pixmap && again && surface);
        ASSERT_EQ(pixmap->width, surface->width());
        ASSERT_EQ(pixmap->height, surface->height());
        const size_t bytes = size_t{4} * row.width * row.height;
        EXPECT_EQ(0, std::memcmp(pixmap->pixels.get(), surface->pixels(), bytes));
        EXPECT_NE(pixmap->pixels, again->pixels);
        EXPECT_EQ(0, std::memcmp(pixmap->pixels.get(), again->pixels.get(), bytes));
    }
    EXPECT_FALSE(loadPixmap("Missing.png"));
    EXPECT_FALSE(loadSurface("Missing.png"));
}

TEST(Bitmap, PassesItsPixelsOn)
{
    using Platform::Bitmap;
    Bitmap first(3, 2, Bitmap::Format::colour);
    void *const pixels = first.pixels();
    Bitmap second(std::move(first));
    EXPECT_EQ(pixels, second.pixels());
    Bitmap third;
    EXPECT_TRUE(third.isEmpty());
    third = std::move(second);
    EXPECT_EQ(pixels, third.pixels());
    EXPECT_EQ(3, third.width());
    EXPECT_EQ(12u, third.bytesPerRow());
}

} // namespace
