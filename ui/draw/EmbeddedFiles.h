#pragma once
#include <cstdint>
#include <map>

#include "PluginBase/Util/String.h"

namespace UI::Native {

/// A file that the build embeds in the program.
struct EmbeddedFile {
    uint32_t size; // bytes
    const uint8_t *data;
    const char *name; // without a folder
};

/// The files of resources/images, sorted by the bytes of their names. A row with null data ends the table.
extern const EmbeddedFile embeddedFiles[];

/// A file's bytes; null and 0 if the file does not exist.
struct EmbeddedData {
    const uint8_t *data = nullptr;
    uint32_t size = 0;
};

/// Results of earlier lookups, including failed ones.
/// Thread  window thread
extern std::map<String, EmbeddedData> embeddedCache;

/// Finds a file by its exact name. The cache limits the table scan to one per name, even for missing files.
/// Thread  window thread
EmbeddedData findEmbeddedFile(const String &name);

} // namespace UI::Native
