#pragma once
#include <cstdint>
#include <map>

#include "PluginBase/Util/String.h"

namespace UI::Native {

/// One file that is part of the program, as the build put it in.
struct EmbeddedFile {
    uint32_t size; // bytes
    const uint8_t *data;
    const char *name; // without a folder
};

/// The files of resources/images in the byte order of their names; a row without data ends the table.
extern const EmbeddedFile embeddedFiles[];

/// A file's bytes; null and 0 if there is no such file.
struct EmbeddedData {
    const uint8_t *data = nullptr;
    uint32_t size = 0;
};

/// What has been looked up so far, in vain or not.
/// Thread  window thread
extern std::map<String, EmbeddedData> embeddedCache;

/// Finds a file by its exact name. The table is walked once for each name, also for one that is not there.
/// Thread  window thread
EmbeddedData findEmbeddedFile(const String &name);

} // namespace UI::Native
