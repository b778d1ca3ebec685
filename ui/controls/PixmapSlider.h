#pragma once
#include <optional>

#include "ui/controls/ValueControl.h"
#include "ui/draw/Pixmap.h"

namespace UI::Native {

/// A vertical fader for a float parameter, with the maximum at the top.
/// State  idle <-> dragging, from press to release; a drag reports one begin, any number of changes and one end
class PixmapSlider : public ValueControl<PixmapSlider> {
public:
    static constexpr const char *kClassName = "UI::Native::PixmapSlider";

    struct Images {
        PixmapRef track, handleNormal, handlePressed, focusOverlay;
    };

    PixmapSlider(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                 const Images &pictures, DSP::Component *parameterOwner, uint32_t parameter, Apply apply);

    /// Reads the parameter's value. If it exceeds the range, clamps it and writes it back.
    void refresh();
    void redraw() override;
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onMouseUp(Point at, uint32_t mods) override;
    bool onDoubleClick(Point at, uint32_t mods) override;
    bool onMouseMove(Point at, uint32_t mods) override;
    bool onWheel(Point at, int32_t delta, uint32_t mods) override;
    bool onKeyDown(uint32_t key, uint32_t mods, bool wasDown) override;

    int32_t pixelOfValue(float v) const;
    float valueOfPixel(int32_t pixel) const;

private:
    int32_t handleHeight() const { return images.handleNormal ? images.handleNormal->height : 0; }

    const Images images;
    int32_t bottomPixel = 1;           // lowest possible row of the handle's top edge
    std::optional<int32_t> grabOffset; // pixels from the handle's top edge to the pointer
    std::optional<float> dragValue;    // reference of a fine drag
};

} // namespace UI::Native
