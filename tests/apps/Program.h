#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>

/// The renderer as a person starts it, with its output caught.
class Program {
public:
    struct Outcome {
        int exitCode; // -1 if a signal ended it
        int signal;   // 0 if it ended by itself
        std::string out, err;
        long peakKiB; // largest resident size
    };

    /// Starts the program in `folder` with the words of `line`; 'these are one'. `largestFile` in bytes is a
    /// limit that the system puts on it.
    Program(const std::filesystem::path &folder, const std::string &line,
            std::optional<uint64_t> largestFile = {});
    ~Program();
    void send(int signal);
    Outcome wait();

private:
    const std::filesystem::path out, err;
    pid_t process;
    bool running = true;
};
