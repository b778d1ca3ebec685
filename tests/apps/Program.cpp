#include "tests/apps/Program.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::string bytesOf(const fs::path &path)
{
    std::stringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

Program::Program(const fs::path &folder, const std::string &line, std::optional<uint64_t> largestFile)
    : out(folder.string() + ".out"), err(folder.string() + ".err"), process(fork())
{
    if (process != 0) return;
    std::signal(SIGINT, SIG_DFL); // a test run in the background inherits SIG_IGN
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    if (largestFile) {
        const rlimit limit = {*largestFile, *largestFile};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" LEAK_SUPPRESSIONS, 0);
    const std::string command = "cd " + folder.string() + " && exec >" + out.string() + " 2>" + err.string() +
                                " && exec " TESSARINE_PROGRAM " " +
                                line; // whose redirections take precedence
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
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
    Outcome outcome = {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                       WIFSIGNALED(status) ? WTERMSIG(status) : 0, bytesOf(out), bytesOf(err),
                       usage.ru_maxrss};
    fs::remove(out);
    fs::remove(err);
    return outcome;
}
