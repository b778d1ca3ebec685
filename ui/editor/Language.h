#pragma once
#include <optional>

#include "ui/editor/TextTable.h"

namespace UI {

/// The language of the host application, read once from its settings; the effect has none of its own. English
/// has its words in images, the others in the string tables.
class Language final : public Native::TextSource {
public:
    enum Index : uint32_t { english, japanese, german, french, italian, spanish, languages };

    Language();
    explicit Language(Index chosen);
    /// What editors opened from now on speak, whatever the host says; nothing: as the host says. For tests
    /// and for the renderer.
    static void prefer(std::optional<Index> chosen);

    Index index() const { return language; }

    const Native::TextRow &row(uint32_t textIndex) const override { return textRow(textIndex); }
    std::u16string string(uint32_t textIndex) const override;
    Platform::FontRef labelFont() const override { return label; }
    Platform::FontRef toolTipFont() const override { return toolTip; }

private:
    const Index language;
    Platform::FontRef label, toolTip; // null in English, or if the system has none
};

} // namespace UI
