#include "apps/tessarine/console/Failure.h"

#include <csignal>

namespace App {

namespace {

volatile std::sig_atomic_t caught = 0;

void note(int signal) { caught = signal; }

} // namespace

void catchSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
        // a signal that the caller ignores, as nohup does, stays ignored
        if (std::signal(signal, note) == SIG_IGN) std::signal(signal, SIG_IGN);
    }
    std::signal(SIGXFSZ, SIG_IGN); // writing beyond the file size limit then fails with EFBIG
}

int caughtSignal() { return caught; }

void stopIfInterrupted()
{
    if (caught != 0) throw Interrupted{caught};
}

} // namespace App
