#pragma once
#include "ui/draw/Pixmap.h"
#include "ui/window/CanvasWindow.h"
#include "ui/window/TextSource.h"

namespace UI::Native {

/// A label: an image in English, text drawn with a font in other languages.
class TranslatedText : public Reflected<TranslatedText, CanvasWindow> {
public:
    static constexpr const char *kClassName = "UI::Native::TranslatedText";

    /// `placeOffset` is added to the row's position.
    TranslatedText(FrameBase *ownerFrame, WindowBase *parentWindow, const TextSource &texts, uint32_t textRow,
                   Point placeOffset);

    void redraw() override;
    bool onMouseDown(Point at, uint32_t mods) override;
    bool onDoubleClick(Point at, uint32_t mods) override { return onMouseDown(at, mods); }

    void sigClicked() { emitSignal<&TranslatedText::sigClicked>(); }
    using Signals = MetaRows<Meta<&TranslatedText::sigClicked>>;

private:
    const TextSource &source;
    const uint32_t row;
    std::u16string words; // empty for the image
    struct {
        int32_t left, right;
    } shown;         // columns that the words take: clicks count there, while ink may reach further
    PixmapRef image; // loaded when first drawn
};

} // namespace UI::Native
