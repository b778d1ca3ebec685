#pragma once
#include <optional>

#include "ui/controls/ValueControl.h"
#include "ui/draw/Pixmap.h"

namespace UI::Native {

/// A vertical fader of a track and a handle on a float parameter; the maximum is at the top.
/// State  idle -> dragging from press to release: one begin, any number of changes, one end
class PixmapSlider : public ValueControl<PixmapSlider> {
public:
    static constexpr const char *kClassName = "UI::Native::PixmapSlider";

    struct Images {
        PixmapRef track, handleNormal, handlePressed, focusOverlay;
    };

    PixmapSlider(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                 const Images &pictures, DSP::Component *parameterOwner, uint32_t parameter, Apply apply);

    /// Takes the parameter's value; one beyond the range is pulled in, and written back.
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
    int32_t bottomPixel = 1;           // lowest row of the handle's upper edge
    std::optional<int32_t> grabOffset; // from the handle's upper edge to where it is held
    std::optional<float> dragValue;    // from which a fine drag is measured
};

} // namespace UI::Native
