#include <charconv>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <map>
#include <string_view>
#include <thread>

#include "tests/driver/Playing.h"
#include "tests/driver/Project.h"

// Uses many effects at random, as a host with several threads does, until the time is over. All choices come
// from the seed; how the threads meet does not, so that the same choices in one thread can be had as well.

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kGroup = 5; // effects to an audio thread

std::map<std::string_view, uint64_t> wishes = {
    {"--seconds", 60}, {"--seed", 1}, {"--instances", 20}, {"--steps", UINT64_MAX}, {"--replay", 0}};

bool readWishes(int count, char **arguments)
{
    for (int i = 1; i < count; ++i) {
        const auto wish = wishes.find(arguments[i]);
        if (wish == wishes.end()) return false;
        const char *const value = wish->first == "--replay" ? "1" : i + 1 < count ? arguments[++i] : "";
        const char *const end = value + std::strlen(value);
        if (std::from_chars(value, end, wish->second).ptr != end || value == end) return false;
    }
    return wishes["--instances"] >= 1 && wishes["--instances"] <= 1000;
}

class Soak {
public:
    Soak()
    {
        for (uint32_t first = 0; first < studio.size(); first += kGroup)
            groups.emplace_back(seed + 3 + first);
    }

    void run()
    {
        if (wishes["--replay"]) return runInOneThread();
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
            std::this_thread::sleep_for(
                std::chrono::milliseconds(10)); // a host's threads leave each other room
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

    // The threads, a turn each.
    void work() { project.step(Random(window.next())); }
    void automateOne()
    {
        DrivenEffect &effect = studio.effect(automation.below(studio.size()));
        automate(effect, Random(automation.next()));
    }
    void playGroup(size_t group)
    {
        const auto first = static_cast<uint32_t>(group) * kGroup;
        for (uint32_t i = first; i < std::min(first + kGroup, studio.size()); ++i)
            playBlock(studio.effect(i), Random(groups[group].next()));
    }

    const uint64_t seed = wishes["--seed"] * 1000, mostSteps = wishes["--steps"];
    const Clock::time_point end = Clock::now() + std::chrono::seconds(wishes["--seconds"]);
    Studio studio{static_cast<uint32_t>(wishes["--instances"])};
    Project project{studio, wishes["--replay"] != 0};
    Random window{seed}, automation{seed + 2};
    std::vector<Random> groups;
    std::atomic<bool> ended = false;
};

} // namespace

int main(int count, char **arguments)
{
    if (!readWishes(count, arguments)) {
        std::fprintf(
            stderr,
            "usage: tessarine_soak [--seconds N] [--seed S] [--instances K] [--replay] [--steps N]\n");
        return 2;
    }
    const auto instances = static_cast<uint32_t>(wishes["--instances"]);
    std::printf("  seed %" PRIu64 ", %" PRIu32 " instances\n", wishes["--seed"], instances);
    std::fflush(stdout);
    Journal::begin(wishes["--seed"], instances);
    const auto start = Clock::now();
    Soak().run();
    std::printf("  %.0f seconds\n", std::chrono::duration<double>(Clock::now() - start).count());
    Journal::print();
    return 0;
}
