#pragma once
#include "apps/tessarine/files/AudioReader.h"
#include "apps/tessarine/files/AudioWriter.h"

namespace App {

/// Writes the input as it lies on the output, for a fair comparison by ear: `delay` frames later, as long as
/// the input, and turned by `gainDb`. Samples that are no numbers become silence.
/// Errors  Failure, Interrupted; the file is not finished yet
void writeDry(AudioReader &reader, AudioWriter &writer, uint32_t delay, double gainDb);

} // namespace App
