#pragma once
#include <optional>

#include "ui/controls/ValueControl.h"
#include "ui/draw/Pixmap.h"

namespace UI::Native {

/// A numeric field for a float parameter, drawn in bitmap digits. The user drags it, turns the wheel, presses keys, or
/// types into an entry box after a click or F2. The pointer stays in place during a drag, so drags have no limit.
/// State  idle -> pressed -> released: opens the entry box if the pointer did not move, otherwise ends the drag
class TextEdit : public ValueControl<TextEdit> {
public:
    static constexpr const char *kClassName = "UI::Native::TextEdit";

    struct Images {
        PixmapRef background, digits, focusOverlay;
    };

    TextEdit(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
             const Images &pictures, DSP::Component *parameterOwner, uint32_t parameter, Apply apply);

    /// Reads and shows the parameter's value.
    void refresh();
    /// Limits the displayed number; the parameter's range stays unchanged.
    void setDisplayRange(float low, float high);
    /// Makes steps equal on a logarithmic scale.
    void setLogarithmic(bool on) { logarithmic = on; }
    /// Sets the ends of the logarithmic scale in units; low = high means 0 to 100.
    void setVisualRange(float low, float high)
    {
        visualLow = low;
        visualHigh = high;
    }
    /// Converts a step on the logarithmic scale to a change of the current value.
    float logStep(float step) const;

    void redraw() override;
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onMouseUp(Point at, uint32_t mods) override;
    bool onMouseMove(Point at, uint32_t mods) override;
    void onCaptureLost() override; // not a click
    bool onWheel(Point at, int32_t delta, uint32_t mods) override;
    bool onKeyDown(uint32_t key, uint32_t mods, bool wasDown) override;

private:
    void openEntryBox();

    bool logarithmic = false;
    float visualLow = 1.0f, visualHigh = 0.0f;
    const Images images;
    std::optional<Point> pressPos, lastPos; // pointer, in the field's coordinates
    bool dragged = false;
    String text;
};

} // namespace UI::Native
