#include <gtest/gtest.h>

#include <cstring>

#include "ui/native/EmbeddedFiles.h"
#include "ui/native/Pixmap.h"
#include "ui/native/Surface.h"

using namespace UI::Native;

namespace {

struct EmbeddedFiles : testing::Test {
    EmbeddedFiles() { embeddedCache.clear(); }
    ~EmbeddedFiles() override { embeddedCache.clear(); }
};

TEST_F(EmbeddedFiles, AreFoundByTheirExactNameAndLoad)
{
    const EmbeddedFile *file = embeddedFiles;
    for (; file->data != nullptr; ++file) {
        SCOPED_TRACE(file->name);
        const EmbeddedData data = findEmbeddedFile(file->name);
        EXPECT_EQ(file->data, data.data);
        EXPECT_EQ(file->size, data.size);
        const PixmapRef pixmap = loadPixmap(file->name);
        const SurfaceRef surface = loadSurface(file->name);
        ASSERT_TRUE(pixmap && surface);
        ASSERT_EQ(Rect::at({}, pixmap->width, pixmap->height), surface->bounds());
        const size_t bytes = size_t{4} * pixmap->stride * pixmap->height;
        EXPECT_EQ(0, std::memcmp(pixmap->pixels.get(), surface->pixels(), bytes));
    }
    EXPECT_EQ(84, file - embeddedFiles);
    for (const char *name : {"background.png", "Background", "Background.png ", ""}) {
        EXPECT_EQ(nullptr, findEmbeddedFile(name).data) << name;
        EXPECT_FALSE(loadPixmap(name) || loadSurface(name)) << name;
    }
}

TEST_F(EmbeddedFiles, AreSearchedOncePerName)
{
    for (int i = 0; i < 2; ++i) {
        const EmbeddedData missing = findEmbeddedFile("Missing.png");
        EXPECT_EQ(nullptr, missing.data);
        EXPECT_EQ(0u, missing.size);
        EXPECT_EQ(1u, embeddedCache.size());
    }
}

} // namespace
