#pragma once
#include <string>

#include "apps/tessarine/files/MetadataChanges.h"

namespace App {

/// Returns a `bext` chunk (EBU Tech 3285) whose time reference is that of the excerpt and whose loudness, if it is set,
/// is the measured one. The rest stays unchanged.
std::string changedBext(std::string bytes, const MetadataChanges &changes);

/// Returns an `iXML` chunk whose time stamps are those of the excerpt.
std::string changedIxml(std::string bytes, uint64_t start);

} // namespace App
