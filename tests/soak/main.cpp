#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>
#include <thread>

#include "tests/soak/AudioThread.h"
#include "tests/soak/AutomationThread.h"
#include "tests/soak/Journal.h"
#include "tests/soak/Project.h"

// Uses many effects at random, as a host with several threads does, until the time is over. All choices come
// from the seed; how the threads meet does not, so that the same choices in one thread can be had as well.

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kGroup = 5; // effects to an audio thread

struct Wishes {
    double seconds = 60;
    uint64_t seed = 1, instances = 20, steps = std::numeric_limits<uint64_t>::max();
    bool replays = false;
};

std::optional<Wishes> read(int count, char **arguments)
{
    Wishes wishes;
    for (int i = 1; i < count; ++i) {
        const std::string_view name = arguments[i];
        if (name == "--replay") {
            wishes.replays = true;
            continue;
        }
        if (++i == count) return std::nullopt;
        char *end = nullptr;
        if (name == "--seconds")
            wishes.seconds = std::strtod(arguments[i], &end);
        else if (name == "--seed")
            wishes.seed = std::strtoull(arguments[i], &end, 10);
        else if (name == "--instances")
            wishes.instances = std::strtoull(arguments[i], &end, 10);
        else if (name == "--steps")
            wishes.steps = std::strtoull(arguments[i], &end, 10);
        if (!end || *end != '\0') return std::nullopt;
    }
    if (wishes.instances < 1 || wishes.instances > 1000 || wishes.seconds <= 0) return std::nullopt;
    return wishes;
}

class Soak {
public:
    explicit Soak(const Wishes &wanted)
        : wishes(wanted),
          studio(wanted.seed, static_cast<uint32_t>(wanted.instances)),
          project(studio, wanted.seed * 1000, wanted.replays),
          automation(studio, wanted.seed * 1000 + 2)
    {
        for (uint32_t first = 0; first < studio.size(); first += kGroup)
            groups.emplace_back(studio, wanted.seed * 1000 + 3 + first, first,
                                std::min(first + kGroup, studio.size()));
    }

    void run()
    {
        if (wishes.replays) return runInOneThread();
        std::vector<std::jthread> threads;
        for (AudioThread &group : groups) threads.emplace_back([&] { repeat(group); });
        threads.emplace_back([&] { repeat(automation); });
        while (!isOver()) project.step();
        ended = true;
    }

private:
    bool isOver() const { return Clock::now() >= end || Journal::counts.windowSteps >= wishes.steps; }

    template <class Thread>
    void repeat(Thread &thread)
    {
        while (!ended) {
            thread.step();
            std::this_thread::sleep_for(
                std::chrono::milliseconds(10)); // a host's threads leave each other room
        }
    }
    void runInOneThread()
    {
        while (!isOver()) {
            project.step();
            automation.step();
            for (AudioThread &group : groups) group.step();
        }
    }

    const Wishes wishes;
    const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                     std::chrono::duration<double>(wishes.seconds));
    Studio studio;
    Project project;
    AutomationThread automation;
    std::vector<AudioThread> groups;
    std::atomic<bool> ended = false;
};

} // namespace

int main(int count, char **arguments)
{
    const std::optional<Wishes> wishes = read(count, arguments);
    if (!wishes) {
        std::fprintf(
            stderr,
            "usage: tessarine_soak [--seconds N] [--seed S] [--instances K] [--replay] [--steps N]\n");
        return 2;
    }
    std::printf("  seed %llu, %llu instances\n", static_cast<unsigned long long>(wishes->seed),
                static_cast<unsigned long long>(wishes->instances));
    std::fflush(stdout);
    Journal::begin(wishes->seed, static_cast<uint32_t>(wishes->instances));
    const auto start = Clock::now();
    {
        Soak soak(*wishes);
        soak.run();
    }
    Journal::print(std::chrono::duration<double>(Clock::now() - start).count());
    return 0;
}
