#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <thread>

#include "tests/realtime/AudioThread.h"
#include "tests/realtime/Controls.h"

// Plays effects in all settings with their editors open, and shows that the audio thread takes no memory and makes
// no system call but for a lock that another thread has.

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr PlayedEffect::Format kFormats[] = {{44100, 2}, {96000, 2}, {44100, 1}, {96000, 1}};
constexpr milliseconds kTimeOfFormat{350};

/// One format, with the threads of a host.
void play(PlayedEffect &effect, PlayedEffect::Format format, uint64_t seed, bool filterOnly, Figures &figures)
{
    effect.restart(format);
    const auto audio = std::make_unique<AudioThread>(effect, seed, figures);
    Controls controls; // its thread is there before the audio thread is armed
    std::atomic<bool> stopping = false;
    std::thread audioThread([&] { audio->run(controls, stopping, filterOnly); });
    while (!audio->isWarm()) std::this_thread::sleep_for(milliseconds(1));
    std::thread automation([&] {
        for (Random random(seed + 1); !stopping; std::this_thread::sleep_for(milliseconds(1)))
            effect.automate(random);
    });
    Random random(seed + 2);
    for (const auto end = Clock::now() + kTimeOfFormat; Clock::now() < end;
         std::this_thread::sleep_for(milliseconds(3)))
        effect.useWindow(random);
    stopping = true;
    audioThread.join();
    automation.join();
}

} // namespace

int main(int count, char **arguments)
{
    const double seconds = count > 1 ? std::strtod(arguments[1], nullptr) : 20;
    uint64_t seed = count > 2 ? std::strtoull(arguments[2], nullptr, 10) * 1000 : 0;
    const bool filterOnly = count > 3 && std::string_view(arguments[3]) == "filter";
    if (!(seconds > 0)) {
        std::fprintf(stderr, "usage: tessarine_realtime [SECONDS [SEED [filter]]]\n");
        return 2;
    }
    Figures figures;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (Clock::now() < end) {
        PlayedEffect effect;
        for (const PlayedEffect::Format format : kFormats)
            play(effect, format, seed += 3, filterOnly, figures);
    }
    return report(figures) ? 0 : 1;
}
