#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>

std::string bytesOf(const std::filesystem::path &path);

/// The renderer as a person starts it, with its output caught.
class Program {
public:
    struct Outcome {
        int exitCode; // -1 if a signal ended it
        int signal;   // 0 if it ended by itself
        std::string out, err;
        long peakKiB; // largest resident size
    };

    /// Starts the program in `folder` with what the shell makes of `line`. `largestFile` in bytes is a limit that
    /// the system puts on it.
    Program(const std::filesystem::path &folder, const std::string &line,
            std::optional<uint64_t> largestFile = {});
    ~Program();
    void send(int signal);
    Outcome wait();

private:
    const std::filesystem::path out, err; // beside the folder: a test sees in it what the program left
    pid_t process;
    bool running = true;
};
