#pragma once
#include <cstdint>
#include <string>

#include "platform/WindowSystem.h"

namespace UI::Native {

/// One of the editor's texts and, for those that are labels, its place.
struct TextRow {
    enum Alignment : uint32_t { left = 0, asPlaced = 1, right = 2 };

    int32_t x, y, width, height; // no size: not a label, a tool tip
    int32_t textInset;           // pixels above text that is drawn by a font
    uint32_t stringId;           // in the first language
    Alignment alignment;
    const char *english;
};

/// Where controls get their words from.
class TextSource {
public:
    virtual const TextRow &row(uint32_t index) const = 0;
    /// In the present language; empty where an image has the words.
    virtual std::u16string string(uint32_t index) const = 0;
    /// Null where images have the words.
    virtual Platform::FontRef labelFont() const = 0;
    virtual Platform::FontRef toolTipFont() const = 0;

protected:
    ~TextSource() = default;
};

} // namespace UI::Native
