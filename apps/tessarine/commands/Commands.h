#pragma once
#include "apps/tessarine/commands/Options.h"

namespace App {

/// The commands of the program. Results go to standard output, warnings and progress to standard error.
/// Errors  Failure, with nothing half-written left behind
void run(const RenderOptions &options);
void run(const ParamsOptions &options);
void run(const LatencyOptions &options);
void run(const ResponseOptions &options);
void run(const ChunkOptions &options);
void run(const EditorOptions &options);

} // namespace App
