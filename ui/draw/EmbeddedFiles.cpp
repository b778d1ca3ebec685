#include "ui/draw/EmbeddedFiles.h"

namespace UI::Native {

std::map<String, EmbeddedData> embeddedCache;

EmbeddedData findEmbeddedFile(const String &name)
{
    const auto [row, isNew] = embeddedCache.try_emplace(name);
    if (isNew) {
        const EmbeddedFile *file = embeddedFiles;
        while (file->data && name != file->name) ++file;
        if (file->data) row->second = {file->data, file->size};
    }
    return row->second;
}

} // namespace UI::Native
