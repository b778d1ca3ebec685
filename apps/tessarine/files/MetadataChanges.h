#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace App {

/// In LUFS, LU and dBTP. May be infinite.
struct MeasuredLoudness {
    double loudness, range, truePeak, maxMomentary, maxShortTerm;
};

/// Differences between the metadata of the input and of a written file.
struct MetadataChanges {
    std::string settings;   // line for the comment; empty for none
    uint64_t start = 0;     // of the written excerpt, in frames
    bool isExcerpt = false; // false for the whole file
    std::optional<MeasuredLoudness> loudness;
};

} // namespace App
