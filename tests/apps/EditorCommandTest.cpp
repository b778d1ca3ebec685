#include <cairo.h>

#include "apps/tessarine/editor/EditorScreen.h"
#include "apps/tessarine/effect/ParameterTable.h"
#include "platform/Geometry.h"
#include "tests/apps/Sandbox.h"

namespace {

using Picture = std::vector<std::vector<uint32_t>>; // rows of pixels

class EditorCommand : public Sandbox {
protected:
    Picture picture(const std::string &options = "") const
    {
        succeed("editor --png editor.png " + options);
        cairo_surface_t *const surface = cairo_image_surface_create_from_png(pathOf("editor.png").c_str());
        Picture rows(static_cast<size_t>(cairo_image_surface_get_height(surface)));
        const unsigned char *data = cairo_image_surface_get_data(surface);
        for (std::vector<uint32_t> &row : rows) {
            const auto *const pixels = reinterpret_cast<const uint32_t *>(data);
            row.assign(pixels, pixels + cairo_image_surface_get_width(surface));
            data += cairo_image_surface_get_stride(surface);
        }
        cairo_surface_destroy(surface);
        return rows;
    }
};

TEST_F(EditorCommand, DrawsTheWholeWindowReproduciblyAndScaled)
{
    const Picture plain = picture(), large = picture("--scale 300");
    ASSERT_TRUE(plain.size() == 488 && plain[0].size() == 547);
    EXPECT_EQ(plain, picture());
    ASSERT_TRUE(large.size() == 3 * 488 && large[0].size() == 3 * 547);
    for (size_t y = 0; y < large.size(); ++y)
        for (size_t x = 0; x < large[y].size(); ++x)
            ASSERT_EQ(plain[y / 3][x / 3], large[y][x]) << x << ' ' << y;
}

TEST_F(EditorCommand, ShowsSettingsFromTheCommandLineAndFromAChunk)
{
    succeed("chunk a.chunk --set 'Band 1 Ratio=4'");
    const Picture set = picture("--set 'Band 1 Ratio=4'");
    EXPECT_NE(picture(), set);
    EXPECT_EQ(picture("--chunk a.chunk"), set);
}

TEST_F(EditorCommand, ShowsMetersAndSpectraAtTheRequestedTime)
{
    // one second of noise, then two seconds of silence
    write("song.wav", kWavFloat, 44100,
          Signals::append(Signals::noise(5, 44100, -6), Signals::silence(88200)));
    const Picture loud = picture("--in song.wav --at 0.9"), over = picture("--in song.wav --at 3");
    EXPECT_TRUE(loud != picture() && loud != over);
    EXPECT_EQ(over, picture("--in song.wav")); // default: the end of a file shorter than 10 s
    write("start.wav", kWavFloat, 44100, Signals::noise(5, 44100 / 2, -6));
    write("whole.wav", kWavFloat, 44100, Signals::noise(5, 44100, -6));
    EXPECT_EQ(picture("--in start.wav"), picture("--in whole.wav --at 0.5"));
}

TEST_F(EditorCommand, ShowsFocusToolTipPressedButtonAndLanguage)
{
    write("song.wav", kWavFloat, 44100, Signals::noise(5, 44100, -6));
    for (const std::string sound : {"", " --in song.wav --at 0"}) {
        const Picture plain = picture(sound), focused = picture("--focus 'band 1 threshold'" + sound),
                      pointed = picture("--point 75,248" + sound),
                      pressed = picture("--press 75,248" + sound),
                      french = picture("--language french" + sound);
        EXPECT_EQ(5u, std::set<Picture>({plain, focused, pointed, pressed, french}).size());
        EXPECT_EQ(plain, picture("--language English --scale '100 %'" + sound));
    }
}

TEST(EditorControls, HaveTheNamesOfTheParameters)
{
    std::set<size_t> controls;
    for (const App::Parameter &p :
         App::listParameters(App::EffectHost({.rate = 44100, .channels = 2, .blockFrames = 512})))
        if (p.hostIndex) controls.insert(App::findEditorControl(p.name));
    EXPECT_EQ(39u, controls.size());
    for (const auto &[parameter, control] : {std::pair{"gain slider", "Output Gain Slider"},
                                             {"Crossover Mid Cutoff", "Mid Cutoff"},
                                             {"Band 3 Comp Threshold", "Band 3 Threshold"},
                                             {"Limiter Brickwall Mode", "Brickwall Limiter"}})
        EXPECT_EQ(App::findEditorControl(control), App::findEditorControl(parameter)) << parameter;
}

TEST_F(EditorCommand, MarksTheControlAskedFor)
{
    const Picture plain = picture();
    for (const auto &[name, place] : {std::pair{"Output Gain Slider", Rect::at({460, 46}, 16, 159)},
                                      {"Band 1 Threshold", Rect::at({54, 400}, 33, 13)},
                                      {"Link Band Controls", Rect::at({517, 413}, 13, 13)}}) {
        const Picture marked = picture(std::string("--focus '") + name + "'");
        EXPECT_NE(plain, marked) << name;
        for (int32_t y = 0; y < 488; ++y)
            for (int32_t x = 0; x < 547; ++x)
                ASSERT_TRUE(plain[y][x] == marked[y][x] || place.contains({x, y}))
                    << name << ", " << x << ", " << y;
    }
}

} // namespace
