#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "tests/ui/Catalogue.h"
#include "ui/native/EmbeddedFiles.h"

using namespace UI::Native;

namespace {

struct EmbeddedFiles : testing::Test {
    EmbeddedFiles() { embeddedCache.clear(); }
    ~EmbeddedFiles() override { embeddedCache.clear(); }
};

TEST_F(EmbeddedFiles, AreThoseTheEditorAsksForInOrder)
{
    std::set<std::string> expected, found;
    for (const CatalogueRow &row : catalogue()) expected.insert(row.name);
    EXPECT_EQ(84u, expected.size());
    const EmbeddedFile *file = embeddedFiles;
    for (; file->data != nullptr; ++file) {
        EXPECT_TRUE(found.empty() || *found.rbegin() < file->name) << file->name;
        found.insert(file->name);
    }
    EXPECT_EQ(expected, found);
}

TEST_F(EmbeddedFiles, AreFoundByTheirExactName)
{
    for (const EmbeddedFile *file = embeddedFiles; file->data != nullptr; ++file) {
        const EmbeddedData data = findEmbeddedFile(file->name);
        EXPECT_EQ(file->data, data.data) << file->name;
        EXPECT_EQ(file->size, data.size) << file->name;
        ASSERT_LT(8u, file->size);
        EXPECT_EQ(0, std::memcmp("\x89PNG\r\n\x1A\n", file->data, 8)) << file->name;
    }
    for (const char *name : {"background.png", "Background", "Background.png ", ""})
        EXPECT_EQ(nullptr, findEmbeddedFile(name).data) << name;
    EXPECT_EQ(nullptr, findEmbeddedFile(String()).data);
}

TEST_F(EmbeddedFiles, AreSearchedOncePerName)
{
    for (int i = 0; i < 2; ++i) {
        const EmbeddedData missing = findEmbeddedFile("Missing.png");
        EXPECT_EQ(nullptr, missing.data);
        EXPECT_EQ(0u, missing.size);
        EXPECT_EQ(1u, embeddedCache.size());
    }
    // What the cache says is believed, whatever the table has.
    embeddedCache["Background.png"] = {};
    EXPECT_EQ(nullptr, findEmbeddedFile("Background.png").data);
    static constexpr uint8_t kByte = 1;
    embeddedCache["Missing.png"] = {&kByte, 1};
    EXPECT_EQ(&kByte, findEmbeddedFile("Missing.png").data);
}

} // namespace
