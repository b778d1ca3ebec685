#include <cairo.h>
#include <gtest/gtest.h>
#include <memory>

#include "tests/apps/Sandbox.h"

namespace {

constexpr int kWidth = 547, kHeight = 488; // pixels

struct Area {
    int left, top, width, height; // pixels
};
constexpr Area kBandOneThreshold{54, 400, 33, 13}, kBandOneRatio{54, 430, 33, 13},
    kSpectrum{14, 24, 377, 167}, kOutputMeter{485, 51, 22, 150}, kBandOneSolo{68, 240, 17, 17},
    kLabels{423, 370, 92, 56};

class Picture {
public:
    explicit Picture(const std::string &path)
        : surface(cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy)
    {
    }
    int width() const { return cairo_image_surface_get_width(surface.get()); }
    int height() const { return cairo_image_surface_get_height(surface.get()); }
    uint32_t pixel(int x, int y) const
    {
        const unsigned char *const row =
            cairo_image_surface_get_data(surface.get()) + y * cairo_image_surface_get_stride(surface.get());
        return reinterpret_cast<const uint32_t *>(row)[x] & 0xFFFFFF;
    }
    bool differs(const Picture &other, const Area &area) const
    {
        for (int y = area.top; y < area.top + area.height; ++y) {
            for (int x = area.left; x < area.left + area.width; ++x) {
                if (pixel(x, y) != other.pixel(x, y)) return true;
            }
        }
        return false;
    }
    size_t colours() const
    {
        std::set<uint32_t> found;
        for (int y = 0; y < height(); ++y) {
            for (int x = 0; x < width(); ++x) found.insert(pixel(x, y));
        }
        return found.size();
    }

private:
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface;
};

class EditorCommand : public Sandbox {
protected:
    Picture picture(const std::string &options = "") const
    {
        succeed("editor --png editor.png " + options);
        return Picture(pathOf("editor.png"));
    }
};

TEST_F(EditorCommand, DrawsTheWholeWindowAndTheSameEveryTime)
{
    const Picture first = picture(), again = picture();
    ASSERT_EQ(kWidth, first.width());
    ASSERT_EQ(kHeight, first.height());
    EXPECT_GT(first.colours(), 100u);
    EXPECT_FALSE(first.differs(again, {0, 0, kWidth, kHeight}));

    const Picture large = picture("--scale 300");
    ASSERT_EQ(3 * kWidth, large.width());
    ASSERT_EQ(3 * kHeight, large.height());
    for (const int corner : {0, 2}) EXPECT_EQ(first.pixel(70, 405), large.pixel(210 + corner, 1215 + corner));
}

TEST_F(EditorCommand, ShowsSettingsFromTheCommandLineAndFromAChunk)
{
    succeed("chunk a.chunk --set 'Band 1 Ratio=4'");
    const Picture plain = picture(), set = picture("--set 'Band 1 Ratio=4'"),
                  loaded = picture("--chunk a.chunk");
    EXPECT_TRUE(plain.differs(set, kBandOneRatio));
    EXPECT_FALSE(plain.differs(set, kBandOneThreshold));
    EXPECT_FALSE(set.differs(loaded, {0, 0, kWidth, kHeight}));
}

TEST_F(EditorCommand, ShowsMetersAndSpectraAtTheMomentAskedFor)
{
    // loud for a second, then silent for two
    write("song.wav", kWavFloat, 44100,
          Signals::append(Signals::noise(5, 44100, -6), Signals::silence(88200)));
    const Picture silent = picture(), loud = picture("--in song.wav --at 0.9"),
                  over = picture("--in song.wav --at 3");
    for (const Area &area : {kSpectrum, kOutputMeter}) {
        EXPECT_TRUE(silent.differs(loud, area));
        EXPECT_TRUE(loud.differs(over, area));
    }
    EXPECT_FALSE(over.differs(picture("--in song.wav"), kOutputMeter)); // the end comes before 10 s
}

TEST_F(EditorCommand, ShowsWhatAPersonDoes)
{
    write("song.wav", kWavFloat, 44100, Signals::noise(5, 44100, -6));
    const Picture plain = picture();
    const Area tip{70, 270, 60, 12}; // below a pointer on the solo button
    for (const std::string sound : {"", " --in song.wav --at 0"}) {
        EXPECT_TRUE(plain.differs(picture("--focus 'band 1 threshold'" + sound), kBandOneThreshold));
        EXPECT_TRUE(plain.differs(picture("--point 75,248" + sound), tip));
        EXPECT_TRUE(plain.differs(picture("--press 75,248" + sound), kBandOneSolo));
    }
}

TEST_F(EditorCommand, SpeaksTheLanguageAskedFor)
{
    const Picture english = picture("--language english"), french = picture("--language french");
    EXPECT_FALSE(picture().differs(english, kLabels));
    EXPECT_TRUE(english.differs(french, kLabels));
}

} // namespace
