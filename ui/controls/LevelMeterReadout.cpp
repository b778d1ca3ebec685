#include "ui/controls/LevelMeterReadout.h"

#include "ui/draw/GlyphStrip.h"

namespace UI::Native {

LevelMeterReadout::LevelMeterReadout(FrameBase *ownerFrame, WindowBase *parentWindow, Point position)
    : Reflected(ownerFrame, parentWindow, "Level Meter Readout")
{
    for (const char *colour : {"Red", "Yellow", "Green"})
        digitStrips.push_back(loadPixmap(String("LevelMeterReadout_Numbers_%1.png").arg(colour)));
    makeCanvas(kWidth, kHeight);
    setGeometry(position.x, position.y, kWidth, kHeight);
    redraw();
}

void LevelMeterReadout::setValue(uint32_t colour, const String &newText)
{
    if (colour >= colours || (colour == colourIndex && newText == text)) return;
    colourIndex = colour;
    text = newText;
    redraw();
}

void LevelMeterReadout::redraw()
{
    copyBackground();
    const Point at{(kWidth - GlyphStrip::textWidth(text.c_str())) / 2, (kHeight - GlyphStrip::kHeight) / 2};
    GlyphStrip::draw(digitStrips[colourIndex], text.c_str(), canvas, at);
    present();
}

bool LevelMeterReadout::onMouseDown(Point, uint32_t)
{
    sigClicked();
    return true;
}

} // namespace UI::Native
