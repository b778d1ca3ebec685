#pragma once
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// A push button of two images over the editor's ground.
class PixmapButton : public Reflected<PixmapButton, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::PixmapButton";

    /// The images are `imagePrefix` with "Normal.png" and "Pressed.png" behind it.
    PixmapButton(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                 const String &imagePrefix, PixmapRef overlay);

    /// Narrows where a press counts, in the button's own pixels.
    void setHotRect(const Rect &area) { hotRect = area; }
    void setImages(const String &imagePrefix);

    void redraw() override;
    void onGeometryChanged() override { redraw(); } // over another ground
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onMouseUp(Point at, uint32_t mods) override;
    bool onDoubleClick(Point at, uint32_t mods) override { return onMouseDown(at, mods); }
    bool onMouseMove(Point at, uint32_t mods) override;
    void onCaptureLost() override; // is no click

    void sigClicked() { emitSignal<&PixmapButton::sigClicked>(); }
    using Signals = MetaRows<Meta<&PixmapButton::sigClicked>>;

private:
    OptionalRect hotRect;
    PixmapRef normalImage, pressedImage;
    const PixmapRef focusOverlay;
    bool down = false; // looks pressed
};

} // namespace UI::Native
