#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

#include "tests/realtime/PlayedEffect.h"
#include "tests/realtime/Report.h"
#include "tests/realtime/SelfTest.h"
#include "tests/simulation/Playing.h"

// Plays effects in all settings with open editors. The audio thread must not allocate memory, and must not make system
// calls except to wait for a lock that another thread holds.

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr PlayedEffect::Format kFormats[] = {{44100, 2}, {96000, 2}, {44100, 1}, {96000, 1}};
constexpr milliseconds kTimeOfFormat{350};

/// Plays blocks without a pause, so that threads meet far more often than in a host. Counts forbidden operations in
/// every block after the first kWarmBlocks of the largest size in a new format.
class AudioThread {
public:
    AudioThread(PlayedEffect &played, uint64_t seed, Figures &sum)
        : effect(played), random(seed), figures(sum)
    {
    }

    /// Thread: the audio thread
    void run(SelfTest &selfTest, const std::atomic<bool> &stopping)
    {
        ++figures.threads;
        figures.armed = RealtimeCheck::arm();
        if (figures.armed) {
            figures.selfTestPassed = selfTest.run() && figures.selfTestPassed;
            Audio silence = Signals::silence(kLongest);
            for (int i = 0; i < kWarmBlocks; ++i)
                for (const bool adds : {false, true}) play(silence, adds);
        }
        warm = true;
        while (figures.armed && !stopping) {
            const uint32_t size = random.pick(std::array{16u, 64u, 128u, 256u, 512u, 1024u, kLongest});
            playChecked(random.chance(0.5) ? size : 16 + random.below(size - 15));
        }
    }

    /// The effect must not be bypassed or suspended before this returns true.
    bool isWarm() const { return warm; }

private:
    void playChecked(uint32_t frames)
    {
        Audio sound = anySound(random, frames);
        const bool adds = random.chance(0.1), sets = random.chance(0.25);
        const uint64_t waits = figures.counts.waits;
        {
            const RealtimeCheck::Scope scope(figures.counts);
            if (sets) effect.automate(random); // many hosts automate on the audio thread
            play(sound, adds);
        }
        ++figures.blocks;
        figures.bypassedBlocks += effect.options().getBypass();
        figures.waitingBlocks += figures.counts.waits != waits;
    }

    void play(Audio &sound, bool adds)
    {
        AEffect *const record = effect.record();
        float *inputs[] = {sound.left.data(), sound.right.data()}, *outputs[] = {left, right};
        (adds ? record->process : record->processReplacing)(record, inputs, outputs,
                                                            static_cast<int32_t>(sound.frames()));
    }

    static constexpr int kWarmBlocks = 2;
    static constexpr uint32_t kLongest = PlayedEffect::kMostFrames;
    PlayedEffect &effect;
    Random random;
    Figures &figures;
    std::atomic<bool> warm = false;
    float left[kLongest] = {}, right[kLongest] = {};
};

/// Plays one format with an audio, an automation and a window thread.
void play(PlayedEffect &effect, PlayedEffect::Format format, uint64_t seed, Figures &figures)
{
    effect.restart(format);
    const auto audio = std::make_unique<AudioThread>(effect, seed, figures);
    SelfTest selfTest; // starts its thread before the audio thread calls arm()
    std::atomic<bool> stopping = false;
    std::thread audioThread([&] { audio->run(selfTest, stopping); });
    while (!audio->isWarm()) std::this_thread::sleep_for(milliseconds(1));
    DSP::Global &options = effect.options();
    options.setProcessAsMono(!options.getProcessAsMono()); // the next block resets the chain, at its new rate
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
    if (!(seconds > 0)) {
        std::fprintf(stderr, "usage: tessarine_realtime [SECONDS [SEED]]\n");
        return 2;
    }
    Figures figures;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (Clock::now() < end) {
        PlayedEffect effect;
        for (const PlayedEffect::Format format : kFormats) play(effect, format, seed += 3, figures);
    }
    return report(figures) ? 0 : 1;
}
