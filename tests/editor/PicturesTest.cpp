#include <fstream>

#include "tests/editor/Session.h"
#include "ui/controls/SpectrumAxis.h"

// Every build and every window system shows these pictures to the last pixel. The numbers are what the test itself
// prints when one does not match, with the picture in a file; a change of them is a change of what users see.

namespace {

using UI::MainWindow;

/// An editor whose ticks come only when they are asked for, so that nothing moves by itself.
class StillEditor : public HostedEffect {
public:
    StillEditor() { mainWindow().stopTicking(); }
    void tickAfter(uint32_t ms)
    {
        desk->wait(ms);
        tick();
    }
    void playMusic() { play(Signals::music(1, kRate, 20000, 3)); }
    /// All parameters by chance, as the host sets them.
    void setAll(uint64_t seed)
    {
        Signals::Random random(seed);
        for (int32_t i = 0; i < effect->numParams; ++i) effect.set(i, random.real(0, 1));
        mainWindow().slotUpdateAll();
    }
    void click(const char *name) { desk->click(control(name).centre()); }
    void hold(const char *name, Point away)
    {
        desk->moveTo(control(name).centre());
        desk->press();
        desk->moveTo(control(name).centre() + away);
    }
    /// The first shows the focus, each that follows moves it on.
    void tabs(int count)
    {
        desk->click({3, 3}); // the keys go to the editor
        controls().front()->setFocus();
        for (int i = 0; i < count; ++i) desk->type(Platform::kKeyTab);
    }
};

struct EditorState {
    const char *name;
    uint64_t hash;
    void (*reach)(StillEditor &);
};
void PrintTo(const EditorState &state, std::ostream *out) { *out << state.name; }

const EditorState kStates[] = {
    {"Opened", 0x966C8C241872DC8C, [](StillEditor &) {}},
    {"AnySettings", 0xC5CDB597831860F4, [](StillEditor &editor) { editor.setAll(1); }},
    {"MetersAndSpectra", 0x066765EBAC6206A9,
     [](StillEditor &editor) {
         editor.playMusic();
         editor.tickAfter(0);
     }},
    {"OverAndReduced", 0xE465041FBAEAA7D4,
     [](StillEditor &editor) {
         for (int32_t band = 0; band < 4; ++band) {
             editor.effect.set(10 + band, 0.3f); // thresholds
             editor.effect.set(18 + band, 0.2f); // ratios
         }
         editor.effect.set(0, 0.9f);
         editor.mainWindow().slotUpdateAll();
         editor.play(Signals::hostile(1, HostedEffect::kRate, 20000));
         editor.tickAfter(0);
     }},
    {"AtRestAgain", 0x67C7C1E55A80E6A6,
     [](StillEditor &editor) {
         editor.playMusic();
         editor.tickAfter(0);
         editor.play(Signals::silence(44100));
         for (int i = 0; i < 60; ++i) editor.tickAfter(MainWindow::kMinRenderMs + 2);
     }},
    {"LowRate", 0x1F4D31C8DE4403D0,
     [](StillEditor &editor) {
         editor.effect.switchOff();
         editor.effect.dispatch(effSetSampleRate, 0, 0, nullptr, 22050.0f);
         editor.effect.switchOn();
         editor.mainWindow().slotUpdateAll();
     }},
    {"SliderHeld", 0x39282111CB17C99F,
     [](StillEditor &editor) {
         editor.hold("output slider", {2, -11});
     }},
    {"FieldDragged", 0x95BEB8BE8D0689C2,
     [](StillEditor &editor) {
         editor.hold("low cutoff", {4, -9});
         editor.desk->release();
     }},
    {"CutoffHeld", 0x4161D1C2864D6DF4,
     [](StillEditor &editor) {
         const int32_t x = 14 + UI::Native::SpectrumAxis(377, 167).column(2000.0f); // the middle line
         editor.desk->moveTo({x, 100});
         editor.desk->press();
         editor.desk->moveTo({x - 20, 60});
     }},
    {"SwitchHeld", 0xA03224EEDFF80E98,
     [](StillEditor &editor) {
         editor.hold("solo 2", {0, 0});
     }},
    {"SoloAndBypass", 0x69BE67B1B8EF48C2,
     [](StillEditor &editor) {
         editor.click("solo 2");
         editor.click("bypass 3");
         editor.click("limiter bypass");
     }},
    {"Boxes", 0x7FDC047C59AD3538,
     [](StillEditor &editor) {
         for (const char *box : {"spectrum on input", "brickwall", "band link"}) editor.click(box);
     }},
    {"FocusOnSlider", 0x3EB52362D9FD59AF, [](StillEditor &editor) { editor.tabs(1); }},
    {"FocusOnField", 0x5939661E2693153C, [](StillEditor &editor) { editor.tabs(3); }},
    {"FocusOnSwitch", 0x55F37875E4D14069, [](StillEditor &editor) { editor.tabs(6); }},
    {"ToolTip", 0x03DB52FF9EE03976,
     [](StillEditor &editor) {
         editor.desk->moveTo(control("solo 2").centre());
         for (int i = 0; i < 3; ++i) editor.tickAfter(700);
     }},
};

using Pixels = std::vector<uint32_t>;

uint64_t hashOf(const Pixels &pixels)
{
    uint64_t hash = 0xCBF29CE484222325ull;
    for (const uint32_t pixel : pixels) hash = (hash ^ pixel) * 0x100000001B3ull; // FNV-1a
    return hash;
}

/// A PPM file in the folder where the tests run.
std::string write(const Pixels &pixels, const char *name)
{
    std::string path = std::string("picture-") + name + ".ppm";
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << VSTEditor::kWidth << ' ' << VSTEditor::kHeight << "\n255\n";
    for (const uint32_t pixel : pixels)
        for (const int shift : {16, 8, 0}) file.put(static_cast<char>(pixel >> shift));
    return path;
}

class Pictures : public testing::TestWithParam<EditorState> {};
INSTANTIATE_TEST_SUITE_P(Of, Pictures, testing::ValuesIn(kStates),
                         [](const auto &made) { return std::string(made.param.name); });

TEST_P(Pictures, AreTheSameToTheLastPixelEverywhere)
{
    StillEditor editor;
    GetParam().reach(editor);
    editor.desk->wait(0); // all is painted
    const Pixels shown = editor.desk->pixels();
    EXPECT_EQ(GetParam().hash, hashOf(shown))
        << "0x" << std::hex << hashOf(shown) << ", see " << write(shown, GetParam().name);
    editor.desk->release(); // whatever is still held
}

} // namespace
