#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <png.h>
#include <random>

#include "tests/ui/PngWriter.h"
#include "ui/native/EmbeddedFiles.h"
#include "ui/native/Pixmap.h"
#include "ui/native/Png.h"

using namespace UI::Native;

namespace {

/// Makes bytes known as an embedded file for as long as it lives.
class AsEmbeddedFile {
public:
    explicit AsEmbeddedFile(const std::vector<uint8_t> &bytes)
    {
        embeddedCache[kName] = {bytes.data(), static_cast<uint32_t>(bytes.size())};
    }
    ~AsEmbeddedFile() { embeddedCache.erase(kName); }
    PixmapRef load() const { return loadPixmap(kName); }

private:
    static constexpr const char *kName = "Test.png";
};

struct Form {
    const char *name;
    int colourType, bitDepth;
    bool transparency; // by tRNS
};

std::ostream &operator<<(std::ostream &to, const Form &form) { return to << form.name; }

constexpr Form kForms[] = {
    {"Grey1", PNG_COLOR_TYPE_GRAY, 1, false},
    {"Grey2", PNG_COLOR_TYPE_GRAY, 2, false},
    {"Grey4", PNG_COLOR_TYPE_GRAY, 4, false},
    {"Grey8", PNG_COLOR_TYPE_GRAY, 8, false},
    {"Grey16", PNG_COLOR_TYPE_GRAY, 16, false},
    {"Grey2OneTransparent", PNG_COLOR_TYPE_GRAY, 2, true},
    {"Rgb8", PNG_COLOR_TYPE_RGB, 8, false},
    {"Rgb16", PNG_COLOR_TYPE_RGB, 16, false},
    {"Rgb8OneTransparent", PNG_COLOR_TYPE_RGB, 8, true},
    {"GreyAlpha8", PNG_COLOR_TYPE_GRAY_ALPHA, 8, false},
    {"GreyAlpha16", PNG_COLOR_TYPE_GRAY_ALPHA, 16, false},
    {"Rgba8", PNG_COLOR_TYPE_RGB_ALPHA, 8, false},
    {"Rgba16", PNG_COLOR_TYPE_RGB_ALPHA, 16, false},
    {"Palette1", PNG_COLOR_TYPE_PALETTE, 1, false},
    {"Palette4", PNG_COLOR_TYPE_PALETTE, 4, true},
    {"Palette8", PNG_COLOR_TYPE_PALETTE, 8, false},
    {"Palette8Transparent", PNG_COLOR_TYPE_PALETTE, 8, true},
};

int samplesPerPixel(int colourType)
{
    if (colourType & PNG_COLOR_MASK_PALETTE) return 1;
    return (colourType & PNG_COLOR_MASK_COLOR ? 3 : 1) + (colourType & PNG_COLOR_MASK_ALPHA ? 1 : 0);
}

PngPicture randomPicture(const Form &form, bool interlaced)
{
    std::mt19937 random(7);
    PngPicture picture{form.colourType, form.bitDepth, interlaced, 19, 13, {}};
    const uint32_t levels = 1u << std::min(form.bitDepth, 8);
    const int bytes = samplesPerPixel(form.colourType) * (form.bitDepth == 16 ? 2 : 1);
    picture.samples.resize(picture.width * picture.height * bytes);
    for (uint8_t &sample : picture.samples) sample = random() % levels;
    if (form.colourType == PNG_COLOR_TYPE_PALETTE) {
        picture.palette.resize(levels);
        for (auto &colour : picture.palette)
            for (uint8_t &channel : colour) channel = random();
        if (form.transparency) picture.paletteAlpha = {0, 128, 255, 1};
    } else if (form.transparency) { // the colour of the first pixel
        picture.transparentColour.assign(picture.samples.begin(), picture.samples.begin() + bytes);
    }
    return picture;
}

uint32_t word(uint32_t inverseAlpha, uint32_t red, uint32_t green, uint32_t blue)
{
    return inverseAlpha << 24 | red << 16 | green << 8 | blue;
}

uint32_t expectedPixel(const PngPicture &picture, const uint8_t *at)
{
    if (picture.bitDepth == 16) return 0;
    const uint32_t scale = 255 / ((1u << picture.bitDepth) - 1);
    const auto &clear = picture.transparentColour;
    switch (picture.colourType) {
    case PNG_COLOR_TYPE_GRAY:
        return word(!clear.empty() && clear[0] == at[0] ? 255 : 0, at[0] * scale, at[0] * scale,
                    at[0] * scale);
    case PNG_COLOR_TYPE_RGB:
        return word(!clear.empty() && std::equal(clear.begin(), clear.end(), at) ? 255 : 0, at[0], at[1],
                    at[2]);
    case PNG_COLOR_TYPE_GRAY_ALPHA: return word(255 - at[1], at[0], at[0], at[0]);
    case PNG_COLOR_TYPE_RGB_ALPHA: return word(255 - at[3], at[0], at[1], at[2]);
    default: {
        const auto &[red, green, blue] = picture.palette[at[0]];
        const auto &alpha = picture.paletteAlpha;
        return word(at[0] < alpha.size() ? 255 - alpha[at[0]] : 0, red, green, blue);
    }
    }
}

class PngForm : public testing::TestWithParam<std::tuple<Form, bool>> {};

TEST_P(PngForm, BecomesTheRightPixels)
{
    const auto &[form, interlaced] = GetParam();
    const PngPicture picture = randomPicture(form, interlaced);
    const std::vector<uint8_t> file = writePng(picture);
    const PixmapRef pixmap = AsEmbeddedFile(file).load();
    ASSERT_TRUE(pixmap);
    EXPECT_EQ(19, pixmap->width);
    EXPECT_EQ(13, pixmap->height);
    EXPECT_EQ(19u, pixmap->stride);

    const size_t count = size_t{picture.width} * picture.height, bytes = picture.samples.size() / count;
    std::vector<uint32_t> expected;
    for (size_t i = 0; i < count; ++i)
        expected.push_back(expectedPixel(picture, &picture.samples[i * bytes]));
    EXPECT_EQ(expected, std::vector<uint32_t>(pixmap->pixels.get(), pixmap->pixels.get() + count));
    EXPECT_EQ(std::any_of(expected.begin(), expected.end(), [](uint32_t pixel) { return pixel >> 24 != 0; }),
              pixmap->hasAlpha);
}

INSTANTIATE_TEST_SUITE_P(All, PngForm, testing::Combine(testing::ValuesIn(kForms), testing::Bool()),
                         [](const auto &test) {
                             return std::string(std::get<0>(test.param).name) +
                                    (std::get<1>(test.param) ? "Interlaced" : "");
                         });

TEST(Png, KnowsAlphaByThePixels)
{
    PngPicture picture{PNG_COLOR_TYPE_RGB_ALPHA, 8, false, 3, 2, std::vector<uint8_t>(24, 255)};
    EXPECT_FALSE(AsEmbeddedFile(writePng(picture)).load()->hasAlpha);
    picture.samples.back() = 254;
    const PixmapRef pixmap = AsEmbeddedFile(writePng(picture)).load();
    EXPECT_TRUE(pixmap->hasAlpha);
    EXPECT_EQ(0x01FFFFFFu, pixmap->pixels[5]);
    EXPECT_EQ(0x00FFFFFFu, pixmap->pixels[4]);
}

TEST(Png, OfAbsurdSizeIsRefused)
{
    std::vector<uint8_t> file =
        writePng({PNG_COLOR_TYPE_GRAY, 8, false, 2, 2, std::vector<uint8_t>{1, 2, 3, 4}});
    constexpr size_t kWidth = 16; // first of four bytes; the height follows
    for (const std::array<uint8_t, 8> size : {std::array<uint8_t, 8>{0, 0, 0x10, 1, 0, 0, 0, 1},
                                              {0, 0, 0, 1, 0x7F, 0xFF, 0xFF, 0xFF},
                                              {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
                                              {0, 0, 0, 0, 0, 0, 0, 0}}) {
        std::copy(size.begin(), size.end(), file.begin() + kWidth);
        repairCheckSums(file);
        EXPECT_FALSE(AsEmbeddedFile(file).load());
    }
}

TEST(Png, CutShortIsRefused)
{
    const EmbeddedData whole = findEmbeddedFile("Slider_Handle_Normal.png");
    constexpr uint32_t kEndChunk = 12;
    for (uint32_t size = 0; size < whole.size; size += size < whole.size - 2 * kEndChunk ? 7 : 1)
        EXPECT_FALSE(AsEmbeddedFile(std::vector<uint8_t>(whole.data, whole.data + size)).load()) << size;
}

/// Damages a file in one of the ways that files get damaged. The check sums are right afterwards every other
/// time, so that the damage comes past them.
void damage(std::vector<uint8_t> &file, size_t reach, std::mt19937 &random)
{
    const auto any = [&](size_t below) { return static_cast<size_t>(random()) % below; };
    reach = std::min(reach, file.size());
    constexpr size_t kHeader = 16, kHeaderSize = 13, kChunks = 8;
    switch (any(5)) {
    case 0:
        for (size_t flips = 1 + any(3); flips-- > 0;) file[any(reach)] ^= 1u << any(8);
        break;
    case 1: file.resize(any(reach)); break;
    case 2: file[kHeader + any(kHeaderSize)] = static_cast<uint8_t>(random()); break;
    case 3: { // length of a chunk: the first has 13 bytes, the second follows it
        const size_t chunk = any(2) == 0 ? kChunks : kChunks + 12 + kHeaderSize;
        file[chunk + (any(4) == 0 ? any(4) : 3)] = static_cast<uint8_t>(random());
        break;
    }
    default: {
        const size_t from = any(reach), to = any(reach), count = any(reach - std::max(from, to)) + 1;
        std::memmove(&file[to], &file[from], count);
    }
    }
    if (any(2) == 0) repairCheckSums(file);
}

TEST(Png, DamagedGivesAPictureOrNothing)
{
    constexpr int kTimes = 1000;
    constexpr int64_t kLarge = 20000; // pixels; such are mostly damaged where decoding has not begun
    constexpr size_t kLargeReach = 60;
    std::mt19937 random(51);
    int pictures = 0;
    for (const EmbeddedFile *whole = embeddedFiles; whole->data != nullptr; ++whole) {
        SCOPED_TRACE(whole->name);
        const PixmapRef undamaged = loadPixmap(whole->name);
        const bool isLarge = int64_t{undamaged->width} * undamaged->height > kLarge;
        for (int i = 0; i < kTimes; ++i) {
            std::vector<uint8_t> file(whole->data, whole->data + whole->size);
            damage(file, isLarge && i % 16 != 0 ? kLargeReach : file.size(), random);
            file.shrink_to_fit(); // reading on beyond the end shall show
            const PixmapRef pixmap = AsEmbeddedFile(file).load();
            if (!pixmap) continue;
            ++pictures;
            ASSERT_TRUE(pixmap->width > 0 && pixmap->height > 0 && pixmap->width <= int{Png::kMaxSide} &&
                        pixmap->height <= int{Png::kMaxSide});
            const uint32_t *const pixels = pixmap->pixels.get();
            const uint32_t all = std::accumulate(pixels, pixels + pixmap->stride * pixmap->height, 0u,
                                                 [](uint32_t a, uint32_t b) { return a | b; });
            ASSERT_TRUE(pixmap->hasAlpha || all >> 24 == 0);
        }
    }
    EXPECT_GT(pictures, 1000) << "the damage was too coarse to say much";
}

} // namespace
