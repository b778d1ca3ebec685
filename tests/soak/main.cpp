#include <charconv>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <map>
#include <string_view>
#include <thread>

#include "tests/simulation/HostActions.h"
#include "tests/simulation/Playing.h"

// Uses many effects at random in several threads for a given time. The seed decides all actions but not the timing of
// the threads; --replay repeats the actions in one thread.

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kGroup = 5; // effects per audio thread

std::map<std::string_view, uint64_t> options = {
    {"--seconds", 60}, {"--seed", 1}, {"--instances", 20}, {"--steps", UINT64_MAX}, {"--replay", 0}};

bool readOptions(int count, char **arguments)
{
    for (int i = 1; i < count; ++i) {
        const auto option = options.find(arguments[i]);
        if (option == options.end()) return false;
        const char *const value = option->first == "--replay" ? "1" : i + 1 < count ? arguments[++i] : "";
        const char *const end = value + std::strlen(value);
        if (std::from_chars(value, end, option->second).ptr != end || value == end) return false;
    }
    return options["--instances"] >= 1 && options["--instances"] <= 1000;
}

class Soak {
public:
    Soak()
    {
        for (uint32_t first = 0; first < host.size(); first += kGroup) groups.emplace_back(seed + 3 + first);
    }

    void run()
    {
        if (options["--replay"]) return runInOneThread();
        std::vector<std::jthread> threads;
        for (size_t i = 0; i < groups.size(); ++i)
            threads.emplace_back([this, i] { repeat([this, i] { playGroup(i); }); });
        threads.emplace_back([this] { repeat([this] { automateOne(); }); });
        while (!isOver()) work();
        ended = true;
    }

private:
    bool isOver() const { return Clock::now() >= end || Journal::steps.count >= mostSteps; }

    template <class Act>
    void repeat(Act act)
    {
        while (!ended) {
            act();
            std::this_thread::sleep_for(std::chrono::milliseconds(10)); // let the other threads run
        }
    }
    void runInOneThread()
    {
        while (!isOver()) {
            work();
            automateOne();
            for (size_t i = 0; i < groups.size(); ++i) playGroup(i);
        }
    }

    // One turn of the window thread, the automation thread and an audio thread.
    void work() { actions.step(Random(window.next())); }
    void automateOne()
    {
        EffectInstance &effect = host.effect(automation.below(host.size()));
        automate(effect, Random(automation.next()));
    }
    void playGroup(size_t group)
    {
        const auto first = static_cast<uint32_t>(group) * kGroup;
        for (uint32_t i = first; i < std::min(first + kGroup, host.size()); ++i)
            playBlock(host.effect(i), Random(groups[group].next()));
    }

    const uint64_t seed = options["--seed"] * 1000, mostSteps = options["--steps"];
    const Clock::time_point end = Clock::now() + std::chrono::seconds(options["--seconds"]);
    SimulatedHost host{static_cast<uint32_t>(options["--instances"])};
    HostActions actions{host, options["--replay"] != 0};
    Random window{seed}, automation{seed + 2};
    std::vector<Random> groups;
    std::atomic<bool> ended = false;
};

} // namespace

int main(int count, char **arguments)
{
    if (!readOptions(count, arguments)) {
        std::fprintf(
            stderr,
            "usage: tessarine_soak [--seconds N] [--seed S] [--instances K] [--replay] [--steps N]\n");
        return 2;
    }
    const auto instances = static_cast<uint32_t>(options["--instances"]);
    std::printf("  seed %" PRIu64 ", %" PRIu32 " instances\n", options["--seed"], instances);
    std::fflush(stdout);
    Journal::begin(options["--seed"], instances);
    const auto start = Clock::now();
    Soak().run();
    std::printf("  %.0f seconds\n", std::chrono::duration<double>(Clock::now() - start).count());
    Journal::print();
    return 0;
}
