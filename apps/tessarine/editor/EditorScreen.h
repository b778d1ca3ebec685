#pragma once
#include <cstdint>
#include <string>

#include "apps/tessarine/effect/EffectHost.h"
#include "platform/offscreen/OffscreenWindowSystem.h"
#include "ui/editor/Language.h"

namespace App {

/// The editor's languages as people call them in English, by their index.
constexpr const char *kLanguages[UI::Language::languages] = {"english", "japanese", "german",
                                                             "french",  "italian",  "spanish"};

/// Position of a control in the order of the Tab key, by the name that a person gives it, in any case.
/// Errors  Failure with the nearest names
size_t findEditorControl(const std::string &name);

/// A screen in memory with an effect's editor on it and a person in front of it. Its clock stands until
/// someone lets time pass.
/// States  made -> effects made now have an editor -> open(), once. It outlives these effects
/// Errors  Failure from open() if the editor does not come up
class EditorScreen {
public:
    /// `language` is one of kLanguages.
    explicit EditorScreen(const std::string &language);
    ~EditorScreen();
    EditorScreen(const EditorScreen &) = delete;
    EditorScreen &operator=(const EditorScreen &) = delete;

    void open(EffectHost &host);
    void wait(uint32_t ms) { system.advance(ms); }
    /// Moves the focus as the Tab key does, until it is on the control with this place in its order.
    void focus(EffectHost &host, size_t control);
    void moveTo(Point at) { system.movePointer(at); }
    /// The left button goes down and stays there.
    void press(Point at);
    /// A PNG, every pixel as a square of `scale` by `scale` pixels.
    std::string picture(uint32_t scale) const;

private:
    Platform::OffscreenWindowSystem system;
    Platform::WindowHandle window = nullptr;
};

} // namespace App
