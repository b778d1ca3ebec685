#pragma once
#include <cstdint>

namespace Platform {

/// An entry of the string table that the build generates from resources/strings.
struct EmbeddedString {
    uint32_t id;
    const char16_t *text; // null ends the table
};
/// In ascending order of `id`.
extern const EmbeddedString embeddedStrings[];

} // namespace Platform
