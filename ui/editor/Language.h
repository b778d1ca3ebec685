#pragma once
#include <optional>

#include "ui/editor/TextTable.h"

namespace UI {

/// The editor's language, read from the host's language setting on construction. English strings are images; other
/// languages use string tables.
class Language final : public Native::TextSource {
public:
    enum Index : uint32_t { english, japanese, german, french, italian, spanish, languages };

    Language();
    explicit Language(Index chosen);
    /// Overrides the host's language for editors opened from now on; nullopt restores it. For tests and the
    /// renderer.
    static void prefer(std::optional<Index> chosen);

    Index index() const { return language; }

    const Native::TextRow &row(uint32_t textIndex) const override { return textRow(textIndex); }
    std::u16string string(uint32_t textIndex) const override;
    Platform::FontRef labelFont() const override { return label; }
    Platform::FontRef toolTipFont() const override { return toolTip; }

private:
    const Index language;
    Platform::FontRef label, toolTip; // null in English, or if the system lacks the font
};

} // namespace UI
