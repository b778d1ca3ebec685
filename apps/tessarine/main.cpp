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

} // namespace

int main(int argc, char **argv)
{
    App::catchSignals();
    try {
        App::runCommandLine(argc, argv);
        return std::fflush(stdout) == 0 ? 0 : fail("cannot write to standard output");
    } catch (const App::Usage &usage) {
        std::fputs(usage.text.c_str(), usage.exitCode == 0 ? stdout : stderr);
        return usage.exitCode;
    } catch (const App::ExitStatus &status) {
        return std::fflush(stdout) == 0 ? status.code : fail("cannot write to standard output");
    } catch (const App::Interrupted &stop) {
        fail("interrupted; no file was written");
        std::signal(stop.signal, SIG_DFL);
        std::raise(stop.signal); // shells check whether a signal ended the program
        return 1;
    } catch (const App::Failure &failure) {
        return fail(failure.what());
    } catch (const std::bad_alloc &) {
        return fail("not enough memory; close other programs and try again");
    } catch (const std::exception &unexpected) {
        return fail(unexpected.what());
    }
}
