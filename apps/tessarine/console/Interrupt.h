#pragma once

namespace App {

/// From here on the signals that end a program only leave a note, so that half-written files are removed. A
/// file that may not grow is told as any failed write.
void catchSignals();

/// Throws Interrupted if one of them has come. Long loops call it.
void stopIfInterrupted();

} // namespace App
