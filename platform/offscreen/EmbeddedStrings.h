#pragma once
#include <cstdint>

namespace Platform {

/// A text of the module's string table, as the build makes it from resources/strings.
struct EmbeddedString {
    uint32_t id;
    const char16_t *text; // null ends the table
};
/// By rising number.
extern const EmbeddedString embeddedStrings[];

} // namespace Platform
