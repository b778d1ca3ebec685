#pragma once
#include <vector>

#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"

namespace UI::Native {

/// A short number in small digits of one of three colours.
class LevelMeterReadout : public Reflected<LevelMeterReadout, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::LevelMeterReadout";
    enum Colour : uint32_t { red = 0, yellow = 1, green = 2, colours };
    static constexpr int32_t kWidth = 38, kHeight = 10; // pixels

    LevelMeterReadout(FrameBase *ownerFrame, WindowBase *parentWindow, Point position);

    /// Changes nothing if `colour` is invalid.
    void setValue(uint32_t colour, const String &newText);

    void redraw() override;
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onDoubleClick(Point at, uint32_t mods) override { return onMouseDown(at, mods); }

    void sigClicked() { emitSignal<&LevelMeterReadout::sigClicked>(); }
    using Signals = MetaRows<Meta<&LevelMeterReadout::sigClicked>>;

private:
    uint32_t colourIndex = red;
    String text;
    std::vector<PixmapRef> digitStrips; // by Colour
};

} // namespace UI::Native
