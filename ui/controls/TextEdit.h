#pragma once
#include <optional>

#include "ui/controls/ValueControl.h"
#include "ui/draw/Pixmap.h"

namespace UI::Native {

/// A number in bitmap digits on a float parameter: dragged without end, as the pointer is held in its place,
/// turned by the wheel, stepped by keys, or typed into a small box after a click or F2.
/// State  idle -> pressed -> released without motion: the box opens; else the drag ends
class TextEdit : public ValueControl<TextEdit> {
public:
    static constexpr const char *kClassName = "UI::Native::TextEdit";

    struct Images {
        PixmapRef background, digits, focusOverlay;
    };

    TextEdit(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
             const Images &pictures, DSP::Component *parameterOwner, uint32_t parameter, Apply apply);

    /// Takes the parameter's value.
    void refresh();
    /// The range of the number on show; the parameter keeps its own.
    void setDisplayRange(float low, float high);
    /// Steps become equal on a logarithmic scale of so many units; low = high stands for 0 to 100.
    void setLogarithmic(bool on) { logarithmic = on; }
    void setVisualRange(float low, float high)
    {
        visualLow = low;
        visualHigh = high;
    }
    /// A step of the scale as a step of the parameter, from the present value on.
    float logStep(float step) const;

    void redraw() override;
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onMouseUp(Point at, uint32_t mods) override;
    bool onMouseMove(Point at, uint32_t mods) override;
    void onCaptureLost() override; // is no click
    bool onWheel(Point at, int32_t delta, uint32_t mods) override;
    bool onKeyDown(uint32_t key, uint32_t mods, bool wasDown) override;

private:
    void openEntryBox();

    bool logarithmic = false;
    float visualLow = 1.0f, visualHigh = 0.0f;
    const Images images;
    std::optional<Point> pressPos, lastPos; // pointer, in the field's own pixels
    bool dragged = false;
    String text;
};

} // namespace UI::Native
