#pragma once
#include <cstdint>
#include <string>

#include "platform/WindowSystem.h"

namespace UI::Native {

/// One of the editor's strings and, for a label, its position.
struct TextRow {
    enum Alignment : uint32_t { left = 0, asPlaced = 1, right = 2 };

    int32_t x, y, width, height; // pixels; all 0 for a tool tip
    int32_t textInset;           // pixels above text that is drawn with a font
    uint32_t stringId;           // of the English string; see Language::string
    Alignment alignment;
    const char *english;
};

/// Supplies the controls with strings and fonts.
class TextSource {
public:
    virtual const TextRow &row(uint32_t index) const = 0;
    /// The string in the current language; empty if an image shows it.
    virtual std::u16string string(uint32_t index) const = 0;
    /// Null if images show the labels.
    virtual Platform::FontRef labelFont() const = 0;
    virtual Platform::FontRef toolTipFont() const = 0;

protected:
    ~TextSource() = default;
};

} // namespace UI::Native
