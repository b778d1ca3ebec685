#include "apps/tessarine/editor/EditorScreen.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Text.h"
#include "apps/tessarine/pictures/Drawing.h"
#include "host/VSTEditor.h"
#include "ui/editor/MainWindow.h"

namespace App {

namespace {

/// Name of the parameter that the control called `control` sets.
std::string parameterOf(std::string control)
{
    constexpr std::pair<std::string_view, std::string_view> kDifferences[] = {
        {"Output Gain", "Gain"},
        {"Low Cutoff", "Crossover Low Cutoff"},
        {"Mid Cutoff", "Crossover Mid Cutoff"},
        {"High Cutoff", "Crossover High Cutoff"},
        {"Spectrum On Input", "Band 1 Spectrum On Input"}, // sets those of the other bands, too
        {"Brickwall Limiter", "Limiter Brickwall Mode"},
        {"Link Band Controls", "Dynamics Band Link"},
    };
    for (const auto &[shown, parameter] : kDifferences) {
        if (control.starts_with(shown)) return control.replace(0, shown.size(), parameter);
    }
    const size_t threshold = control.find("Threshold");
    if (control.starts_with("Band ") && threshold != std::string::npos) control.insert(threshold, "Comp ");
    return control;
}

} // namespace

size_t findEditorControl(const std::string &name)
{
    const std::vector<std::string> controls = UI::MainWindow::controlNames();
    std::vector<std::string> parameters;
    for (size_t i = 0; i < controls.size(); ++i) {
        parameters.push_back(parameterOf(controls[i]));
        if (sameName(controls[i], name) || sameName(parameters[i], name)) return i;
    }
    constexpr size_t kSuggestions = 3;
    throw Failure(fmt::format("no control '{}' takes the keyboard focus; similar names are '{}'", name,
                              fmt::join(nearestNames(name, parameters, kSuggestions), "', '")));
}

EditorScreen::EditorScreen(const std::string &language)
{
    const auto known = std::find(std::begin(kLanguages), std::end(kLanguages), language);
    UI::Language::prefer(static_cast<UI::Language::Index>(known - std::begin(kLanguages)));
    Platform::useWindowSystem(&system);
}

EditorScreen::~EditorScreen()
{
    Platform::useWindowSystem(nullptr);
    UI::Language::prefer(std::nullopt);
}

void EditorScreen::open(EffectHost &host)
{
    window = system.makeHostWindow(VSTEditor::kWidth, VSTEditor::kHeight);
    if (!host.openEditor(window))
        throw Failure(
            "the editor did not open, probably for lack of memory; close other programs and try again");
    system.pump();
}

void EditorScreen::focus(EffectHost &host, size_t control)
{
    // the first Tab only shows the focus, the second moves it to the first control
    for (size_t tabs = 0; tabs < control + 2; ++tabs) host.pressTab();
    system.pump();
}

void EditorScreen::press(Point at)
{
    system.movePointer(at);
    system.pressButton();
    system.pump();
}

std::string EditorScreen::picture(uint32_t scale) const
{
    const Platform::Bitmap shot = system.screenshot(window);
    const auto side = static_cast<int>(scale);
    const CairoSurface from(cairo_image_surface_create_for_data(
        static_cast<unsigned char *>(shot.pixels()), CAIRO_FORMAT_RGB24, shot.width(), shot.height(),
        static_cast<int>(shot.bytesPerRow())));
    const CairoSurface to(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, shot.width() * side, shot.height() * side));
    const CairoContext context(cairo_create(to.get()));
    cairo_scale(context.get(), side, side);
    cairo_set_source_surface(context.get(), from.get(), 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(context.get()), CAIRO_FILTER_NEAREST);
    cairo_paint(context.get());
    std::string bytes = encodePng(to.get());
    if (shot.isEmpty() || cairo_status(context.get()) != CAIRO_STATUS_SUCCESS || bytes.empty())
        throw Failure("not enough memory to draw the editor; close other programs and try again");
    return bytes;
}

} // namespace App
