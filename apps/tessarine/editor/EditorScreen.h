#pragma once
#include <cstdint>
#include <string>

#include "apps/tessarine/effect/EffectHost.h"
#include "platform/offscreen/OffscreenWindowSystem.h"
#include "ui/editor/Language.h"

namespace App {

/// English names of the editor's languages, indexed by UI::Language::Index.
constexpr const char *kLanguages[UI::Language::languages] = {"english", "japanese", "german",
                                                             "french",  "italian",  "spanish"};

/// Index of a control in the tab order. `name` is that of its parameter, with " Slider" for a slider beside a
/// text field, or the control's own name in UI::MainWindow. Ignores the case.
/// Errors  Failure that lists similar names of parameters
size_t findEditorControl(const std::string &name);

/// An offscreen window system with an effect's editor and a simulated user. Only wait() advances its clock.
/// States  after construction, make the effect, then call open() once; the screen must outlive the effect
/// Errors  Failure from open() if the editor does not open
class EditorScreen {
public:
    /// `language` is one of kLanguages.
    explicit EditorScreen(const std::string &language);
    ~EditorScreen();
    EditorScreen(const EditorScreen &) = delete;
    EditorScreen &operator=(const EditorScreen &) = delete;

    void open(EffectHost &host);
    void wait(uint32_t ms) { system.advance(ms); }
    /// Presses Tab until the control with this index in the tab order has the focus. Call at most once.
    void focus(EffectHost &host, size_t control);
    void moveTo(Point at) { system.movePointer(at); }
    /// Presses the left mouse button at a pixel of the window and holds it.
    void press(Point at);
    /// Returns the bytes of a PNG file in which each pixel is enlarged to `scale` by `scale` pixels.
    std::string picture(uint32_t scale) const;

private:
    Platform::OffscreenWindowSystem system;
    Platform::WindowHandle window = nullptr;
};

} // namespace App
