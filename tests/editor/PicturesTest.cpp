#include <fstream>

#include "tests/editor/Session.h"
#include "ui/controls/SpectrumAxis.h"

// The editor must look the same to the pixel in every build and on every window system. If a hash differs, the test
// prints the new one and writes the picture to a file. Changing a hash changes the look of the editor.

namespace {

using UI::MainWindow;

/// An editor without a timer: it ticks only when the test calls for it.
class ManualEditor : public HostedEffect {
public:
    ManualEditor() { mainWindow().stopTicking(); }
    void tickAfter(uint32_t ms)
    {
        desk->wait(ms);
        tick();
    }
    void playMusic() { play(Signals::music(1, kRate, 20000, 3)); }
    /// Sets all parameters at random.
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
    /// Types Tab `count` times. The first Tab shows the focus mark, the others move it.
    void tabs(int count)
    {
        desk->click({3, 3}); // gives the editor the keyboard focus
        controls().front()->setFocus();
        for (int i = 0; i < count; ++i) desk->type(Platform::kKeyTab);
    }
};

struct EditorState {
    const char *name;
    uint64_t hash;
    void (*reach)(ManualEditor &);
};
void PrintTo(const EditorState &state, std::ostream *out) { *out << state.name; }

const EditorState kStates[] = {
    {"Opened", 0x966C8C241872DC8C, [](ManualEditor &) {}},
    {"AnySettings", 0xC5CDB597831860F4, [](ManualEditor &editor) { editor.setAll(1); }},
    {"MetersAndSpectra", 0x066765EBAC6206A9,
     [](ManualEditor &editor) {
         editor.playMusic();
         editor.tickAfter(0);
     }},
    {"ClippingAndReducing", 0xE465041FBAEAA7D4,
     [](ManualEditor &editor) {
         for (int32_t band = 0; band < 4; ++band) {
             editor.effect.set(10 + band, 0.3f); // thresholds
             editor.effect.set(18 + band, 0.2f); // ratios
         }
         editor.effect.set(0, 0.9f);
         editor.mainWindow().slotUpdateAll();
         editor.play(Signals::hostile(1, HostedEffect::kRate, 20000));
         editor.tickAfter(0);
     }},
    {"AfterDecay", 0x67C7C1E55A80E6A6,
     [](ManualEditor &editor) {
         editor.playMusic();
         editor.tickAfter(0);
         editor.play(Signals::silence(44100));
         for (int i = 0; i < 60; ++i) editor.tickAfter(MainWindow::kMinRenderMs + 2);
     }},
    {"LowRate", 0x1F4D31C8DE4403D0,
     [](ManualEditor &editor) {
         editor.effect.switchOff();
         editor.effect.dispatch(effSetSampleRate, 0, 0, nullptr, 22050.0f);
         editor.effect.switchOn();
         editor.mainWindow().slotUpdateAll();
     }},
    {"SliderHeld", 0x39282111CB17C99F,
     [](ManualEditor &editor) {
         editor.hold("output slider", {2, -11});
     }},
    {"FieldDragged", 0x95BEB8BE8D0689C2,
     [](ManualEditor &editor) {
         editor.hold("low cutoff", {4, -9});
         editor.desk->release();
     }},
    {"CutoffHeld", 0x4161D1C2864D6DF4,
     [](ManualEditor &editor) {
         const int32_t x = 14 + UI::Native::SpectrumAxis(377, 167).column(2000.0f); // the mid cutoff's line
         editor.desk->moveTo({x, 100});
         editor.desk->press();
         editor.desk->moveTo({x - 20, 60});
     }},
    {"SwitchHeld", 0xA03224EEDFF80E98,
     [](ManualEditor &editor) {
         editor.hold("solo 2", {0, 0});
     }},
    {"SoloAndBypass", 0x69BE67B1B8EF48C2,
     [](ManualEditor &editor) {
         editor.click("solo 2");
         editor.click("bypass 3");
         editor.click("limiter bypass");
     }},
    {"Boxes", 0x7FDC047C59AD3538,
     [](ManualEditor &editor) {
         for (const char *box : {"spectrum on input", "brickwall", "band link"}) editor.click(box);
     }},
    {"FocusOnSlider", 0x3EB52362D9FD59AF, [](ManualEditor &editor) { editor.tabs(1); }},
    {"FocusOnField", 0x5939661E2693153C, [](ManualEditor &editor) { editor.tabs(3); }},
    {"FocusOnSwitch", 0x55F37875E4D14069, [](ManualEditor &editor) { editor.tabs(6); }},
    {"ToolTip", 0x03DB52FF9EE03976,
     [](ManualEditor &editor) {
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

/// Writes a PPM file to the current folder and returns its path.
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

TEST_P(Pictures, ArePixelExactInEveryBuild)
{
    ManualEditor editor;
    GetParam().reach(editor);
    editor.desk->wait(0); // finish painting
    const Pixels shown = editor.desk->pixels();
    EXPECT_EQ(GetParam().hash, hashOf(shown))
        << "0x" << std::hex << hashOf(shown) << ", see " << write(shown, GetParam().name);
    editor.desk->release(); // ends a held gesture
}

} // namespace
