#include "ui/controls/ToolTip.h"

#include "ui/draw/Copy.h"
#include "ui/draw/Fill.h"

namespace UI::Native {

namespace {

constexpr uint32_t kFrameColour = 0x000000, kGroundColour = 0xFFFFE1, kTextColour = 0x000000;
constexpr int32_t kSides = 12, kTextEdges = 4, kImageEdges = 2; // pixels, both sides together

} // namespace

ToolTip::ToolTip(FrameBase *ownerFrame, const TextSource &texts)
    : CanvasWindow(ownerFrame, nullptr, "ToolTip"), source(texts)
{
}

void ToolTip::setRow(OptionalIndex textRow)
{
    if (textRow == row) return;
    row = textRow;
    redraw();
}

void ToolTip::redraw()
{
    if (!row) return;
    const Platform::FontRef font = source.toolTipFont();
    const std::u16string words = font ? source.string(row.value) : std::u16string();
    if (!words.empty()) {
        const Platform::TextSize size = Platform::windowSystem().measureText(*font, words);
        makeBox(size.width + kSides, size.height + kTextEdges);
        Platform::windowSystem().drawText(canvas->bitmap(), *font, kTextColour, {kSides / 2, kTextEdges / 2},
                                          words, false);
    } else {
        const PixmapRef image = loadPixmap(String("TranslatedText%1.png").arg(row.value));
        if (!image) return;
        makeBox(image->width + kSides, image->height + kImageEdges);
        drawPixmap(image, canvas, {kSides / 2, kImageEdges / 2});
    }
    setGeometry(geometry.left, geometry.top, canvas->width(), canvas->height());
    present();
}

void ToolTip::makeBox(int32_t boxWidth, int32_t boxHeight)
{
    if (!canvas || canvas->width() != boxWidth || canvas->height() != boxHeight)
        makeCanvas(boxWidth, boxHeight);
    const Rect all = canvas->bounds();
    fillRect(canvas->pixels(), canvas->stride(), all, all, kFrameColour, 0);
    const Rect inside{all.left + 1, all.right - 1, all.top + 1, all.bottom - 1};
    fillRect(canvas->pixels(), canvas->stride(), inside, all, kGroundColour, 0);
}

} // namespace UI::Native
