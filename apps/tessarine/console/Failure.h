#pragma once
#include <stdexcept>

namespace App {

/// An error to report to the user. The message names the problem, the value and the remedy. The program
/// prints it and exits with 1.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Thrown after a signal that ends the program. Destructors remove incomplete files before main catches it.
struct Interrupted {
    int signal;
};

/// Makes SIGINT, SIGTERM, SIGHUP, SIGQUIT and SIGPIPE set a flag for stopIfInterrupted, so that incomplete files are
/// removed. Also ignores SIGXFSZ, so that a file that reaches the size limit causes a Failure.
void catchSignals();

/// The last such signal, or 0.
int caughtSignal();

/// Throws Interrupted after such a signal. Long loops call this or Progress::show, but not once a file was committed:
/// the message says that no file was written.
void stopIfInterrupted();

} // namespace App
