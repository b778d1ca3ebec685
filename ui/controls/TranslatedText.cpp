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
    int32_t x = place.x + placeOffset.x, labelWidth = place.width;
    const std::u16string words = source.string(row);
    const Platform::FontRef font = source.labelFont();
    if (font && !words.empty()) {
        // The click counts on the words, as far as the label's field has room for them.
        const std::u16string_view shown = fitting(words, *font, place.width);
        labelWidth = std::max(Platform::windowSystem().measureText(*font, shown).width, 1);
        if (place.alignment == TextRow::right) x += place.width - labelWidth;
    }
    setGeometry(x, place.y + placeOffset.y, labelWidth, place.height);
    makeCanvas(labelWidth, place.height);
    redraw();
}

void TranslatedText::redraw()
{
    copyBackground();
    const std::u16string words = source.string(row);
    const Platform::FontRef font = source.labelFont();
    if (font && !words.empty()) {
        Platform::windowSystem().drawText(canvas->bitmap(), *font, kLabelColour,
                                          {0, source.row(row).textInset}, fitting(words, *font, width()),
                                          false);
    } else {
        if (!image) image = loadPixmap(String("TranslatedText%1.png").arg(row));
        drawPixmap(image, canvas, {});
    }
    present();
}

bool TranslatedText::onMouseDown(Point, uint32_t)
{
    sigClicked();
    return true;
}

} // namespace UI::Native
