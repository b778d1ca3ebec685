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

} // namespace App
