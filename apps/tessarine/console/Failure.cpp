#include "apps/tessarine/console/Failure.h"

#include <csignal>

namespace App {

namespace {

volatile std::sig_atomic_t caught = 0;

void note(int signal) { caught = signal; }

} // namespace

void catchSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        // one that the caller has switched off, as nohup does, stays off
        if (std::signal(signal, note) == SIG_IGN) std::signal(signal, SIG_IGN);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

void stopIfInterrupted()
{
    if (caught != 0) throw Interrupted{caught};
}

} // namespace App
