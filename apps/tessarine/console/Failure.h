#pragma once
#include <stdexcept>

namespace App {

/// The work cannot be done. The text is the sentence that the user reads: what was wrong, with the value, and
/// what to do about it. The program ends with 1.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The user stopped the program with this signal; everything half-written is gone when it arrives at main.
struct Interrupted {
    int signal;
};

/// From here on the signals that end a program only leave a note, so that half-written files are removed. A
/// file that may not grow is reported like any failed write.
void catchSignals();

/// Throws Interrupted if one of them has come. Long loops call it, or Progress::show.
void stopIfInterrupted();

} // namespace App
