#include <csignal>
#include <cstdio>
#include <exception>

#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"

namespace {

int fail(const char *message)
{
    std::fprintf(stderr, "tessarine: %s\n", message);
    return 1;
}

/// Ends the program as the signal would have, because shells check whether a signal ended a program.
int end(int signal, const char *message)
{
    if (signal != SIGPIPE) fail(message); // programs that lose their reader end silently
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    return 1;
}

int run(int argc, char **argv)
{
    try {
        App::runCommandLine(argc, argv);
    } catch (const App::ExitStatus &status) {
        return status.code;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    App::catchSignals();
    try {
        const int status = run(argc, argv);
        const int signal = App::caughtSignal();
        return signal == 0 ? status : end(signal, "interrupted when the work was done");
    } catch (const App::Usage &usage) {
        std::fputs(usage.text.c_str(), usage.exitCode == 0 ? stdout : stderr);
        return usage.exitCode;
    } catch (const App::Interrupted &stop) {
        return end(stop.signal, "interrupted; no file was written");
    } catch (const App::Failure &failure) {
        return fail(failure.what());
    } catch (const std::bad_alloc &) {
        return fail("not enough memory; close other programs and try again");
    } catch (const std::exception &unexpected) {
        return fail(unexpected.what());
    }
}
