#include <gtest/gtest.h>

#include <png.h>
#include <set>

#include "ui/draw/EmbeddedFiles.h"
#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"

using namespace UI::Native;

namespace {

using Pixels = std::vector<uint32_t>;

/// Decodes a file with libpng's simplified interface.
Pixels decoded(const EmbeddedFile &file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_memory(&image, file.data, file.size));
    image.format = PNG_FORMAT_BGRA;
    Pixels pixels(size_t{image.width} * image.height);
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    return pixels;
}

TEST(Images, LoadWithTheSamePixelsAsInLibpng)
{
    std::set<Pixels> seen;
    const EmbeddedFile *file = embeddedFiles;
    for (; file->data; ++file) {
        SCOPED_TRACE(file->name);
        const PixmapRef pixmap = loadPixmap(file->name);
        const SurfaceRef surface = loadSurface(file->name);
        ASSERT_TRUE(pixmap && surface);
        Pixels wanted = decoded(*file);
        ASSERT_EQ(wanted.size(), size_t{pixmap->stride} * pixmap->height);
        for (uint32_t &pixel : wanted) pixel ^= 0xFF000000; // the editor's alpha is inverted
        EXPECT_EQ(wanted, Pixels(pixmap->pixels.get(), pixmap->pixels.get() + wanted.size()));
        EXPECT_EQ(pixmap->hasAlpha, std::ranges::any_of(wanted, [](uint32_t p) { return p >> 24 != 0; }));
        EXPECT_EQ(surface->bounds(), Rect::at({}, pixmap->width, pixmap->height));
        EXPECT_EQ(wanted, Pixels(surface->pixels(), surface->pixels() + wanted.size()));
        EXPECT_TRUE(seen.insert(wanted).second) << "identical to another image";
    }
    EXPECT_EQ(84, file - embeddedFiles);
    for (const char *name : {"background.png", "Background", "Background.png ", ""})
        EXPECT_FALSE(loadPixmap(name) || loadSurface(name)) << name;
}

TEST(Images, RefuseTruncatedFiles)
{
    const EmbeddedData whole = findEmbeddedFile("Slider_Handle_Normal.png");
    EmbeddedData &cut = embeddedCache["Cut.png"];
    for (uint32_t size = 0; size < whole.size; ++size) {
        const std::vector<uint8_t> bytes(whole.data,
                                         whole.data + size); // a copy: sanitizers find reads past it
        cut = {bytes.data(), size};
        EXPECT_FALSE(loadPixmap("Cut.png") || loadSurface("Cut.png")) << size;
    }
    embeddedCache.clear();
}

TEST(Surfaces, AreEmptyForInvalidSizes)
{
    constexpr int32_t kMost = Platform::Bitmap::kMaxSide;
    for (const auto &[width, height] :
         {std::pair{0, 1}, {1, 0}, {-1, 5}, {5, INT32_MIN}, {kMost + 1, 1}, {INT32_MAX, INT32_MAX}}) {
        const Surface surface(width, height);
        EXPECT_TRUE(surface.isEmpty() && surface.bounds().isEmpty());
        EXPECT_EQ(nullptr, surface.pixels());
    }
}

} // namespace
