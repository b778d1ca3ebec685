#pragma once
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// A push button with two images, drawn over the editor's background.
class PixmapButton : public Reflected<PixmapButton, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::PixmapButton";

    /// Loads the images `imagePrefix` + "Normal.png" and `imagePrefix` + "Pressed.png".
    PixmapButton(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                 const String &imagePrefix, PixmapRef overlay);

    /// Limits the area that accepts a press, in the button's coordinates.
    void setHotRect(const Rect &area) { hotRect = area; }
    void setImages(const String &imagePrefix);

    void redraw() override;
    void onGeometryChanged() override { redraw(); } // the background differs
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onMouseUp(Point at, uint32_t mods) override;
    bool onDoubleClick(Point at, uint32_t mods) override { return onMouseDown(at, mods); }
    bool onMouseMove(Point at, uint32_t mods) override;
    void onCaptureLost() override; // not a click

    void sigClicked() { emitSignal<&PixmapButton::sigClicked>(); }
    using Signals = MetaRows<Meta<&PixmapButton::sigClicked>>;

private:
    OptionalRect hotRect;
    PixmapRef normalImage, pressedImage;
    const PixmapRef focusOverlay;
    bool down = false; // shows the pressed image
};

} // namespace UI::Native
