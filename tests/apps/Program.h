#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>

std::string bytesOf(const std::filesystem::path &path);

/// Runs the renderer in a process of its own and captures its output.
class Program {
public:
    struct Outcome {
        int exitCode; // -1 if a signal ended the process
        int signal;   // the signal that ended the process, or 0
        std::string out, err;
        long peakKiB; // largest resident size
    };

    /// Starts the renderer in `folder`. The shell splits `line` into arguments. `largestFile` is the
    /// process's file size limit in bytes.
    Program(const std::filesystem::path &folder, const std::string &line,
            std::optional<uint64_t> largestFile = {});
    ~Program();
    void send(int signal);
    Outcome wait();

private:
    const std::filesystem::path out, err; // outside `folder`, so that tests can compare its contents
    pid_t process;
    bool running = true;
};
