#include "ui/controls/TranslatedText.h"

#include "ui/draw/Copy.h"

namespace UI::Native {

namespace {

constexpr uint32_t kLabelColour = 0x000000;

/// The first characters of `words` that fit into `room` pixels.
std::u16string_view fitting(std::u16string_view words, const Platform::Font &font, int32_t room)
{
    while (!words.empty() && Platform::windowSystem().measureText(font, words).width > room)
        words.remove_suffix(1);
    return words;
}

} // namespace

TranslatedText::TranslatedText(FrameBase *ownerFrame, WindowBase *parentWindow, const TextSource &texts,
                               uint32_t textRow, Point placeOffset)
    : Reflected(ownerFrame, parentWindow, String("Translated text '%1'").arg(texts.row(textRow).english)),
      source(texts),
      row(textRow)
{
    const TextRow &place = source.row(row);
    setGeometry(place.x + placeOffset.x, place.y + placeOffset.y, place.width, place.height);
    makeCanvas(place.width, place.height);
    shown = {0, place.width};
    if (source.labelFont()) words = source.string(row);
    if (!words.empty()) {
        words = fitting(words, *source.labelFont(), place.width);
        const int32_t wordsWidth = Platform::windowSystem().measureText(*source.labelFont(), words).width;
        const int32_t left = place.alignment == TextRow::right ? place.width - wordsWidth : 0;
        shown = {left, left + std::max(wordsWidth, 1)};
    }
    redraw();
}

void TranslatedText::redraw()
{
    copyBackground();
    if (!words.empty()) {
        Platform::windowSystem().drawText(canvas->bitmap(), *source.labelFont(), kLabelColour,
                                          {shown.left, source.row(row).textInset}, words, false);
    } else {
        if (!image) image = loadPixmap(String("TranslatedText%1.png").arg(row));
        drawPixmap(image, canvas, {});
    }
    present();
}

bool TranslatedText::onMouseDown(Point at, uint32_t)
{
    if (at.x < shown.left || at.x >= shown.right) return false;
    sigClicked();
    return true;
}

} // namespace UI::Native
