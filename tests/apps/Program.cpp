#include "tests/apps/Program.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Outside the folder that the program works in, so that a test sees there what the program left.
fs::path captureFile(const char *stream)
{
    static int serial = 0;
    return fs::temp_directory_path() /
           ("tessarine-test-" + std::to_string(getpid()) + "-" + std::to_string(++serial) + "." + stream);
}

std::string takeText(const fs::path &path)
{
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    fs::remove(path);
    return text.str();
}

void redirect(const fs::path &path, int descriptor)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) _exit(126);
}

std::vector<std::string> words(const std::string &line)
{
    std::vector<std::string> found;
    bool within = false, quoted = false;
    for (const char c : line) {
        if (c == '\'') quoted = !quoted;
        const bool part = quoted || c != ' ';
        if (part && !within) found.emplace_back();
        if (part && c != '\'') found.back() += c;
        within = part;
    }
    return found;
}

} // namespace

Program::Program(const fs::path &folder, const std::string &line, std::optional<uint64_t> largestFile)
    : out(captureFile("out")), err(captureFile("err")), process(fork())
{
    if (process != 0) return;
    redirect(out, STDOUT_FILENO);
    redirect(err, STDERR_FILENO);
    if (largestFile) {
        const rlimit limit = {*largestFile, *largestFile};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" LEAK_SUPPRESSIONS, 0);
    if (chdir(folder.c_str()) != 0) _exit(126);
    std::vector<std::string> arguments = words(line);
    std::vector<char *> argv = {const_cast<char *>(TESSARINE_PROGRAM)};
    for (std::string &argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
}

Program::~Program()
{
    if (!running) return;
    send(SIGKILL);
    wait();
}

void Program::send(int signal) { kill(process, signal); }

Program::Outcome Program::wait()
{
    int status = 0;
    rusage usage{};
    wait4(process, &status, 0, &usage);
    running = false;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
            takeText(out), takeText(err), usage.ru_maxrss};
}
