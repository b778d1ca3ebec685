#include "tests/realtime/AudioThread.h"

#include <array>

#include "tests/driver/Playing.h"
#include "tests/realtime/Controls.h"

void AudioThread::run(Controls &controls, const std::atomic<bool> &stopping, bool filterOnly)
{
    constexpr uint32_t kLongest = PlayedEffect::kMostFrames;
    ++figures.threads;
    figures.way = Watch::arm(filterOnly);
    if (figures.way != Watch::Way::none) {
        figures.controlsFound = controls.run() && figures.controlsFound;
        Audio silence = Signals::silence(kLongest);
        for (int i = 0; i < kWarmBlocks; ++i)
            for (const bool adds : {false, true}) play(silence, adds);
    }
    warm = true;
    if (figures.way == Watch::Way::none) return;
    while (!stopping) {
        const uint32_t size = random.pick(std::array{16u, 64u, 128u, 256u, 512u, 1024u, kLongest});
        playWatched(random.chance(0.5) ? size : 16 + random.below(size - 15));
    }
}

void AudioThread::playWatched(uint32_t frames)
{
    Audio sound = anySound(random, frames);
    const bool adds = random.chance(0.1), sets = random.chance(0.25);
    const uint64_t waits = figures.counts.waits;
    {
        const Watch::Scope scope(figures.counts);
        if (sets) effect.automate(random); // as many hosts do between blocks
        play(sound, adds);
    }
    ++figures.blocks;
    figures.bypassedBlocks += effect.options().getBypass();
    figures.waitingBlocks += figures.counts.waits != waits;
}

void AudioThread::play(Audio &sound, bool adds)
{
    AEffect *const record = effect.record();
    float *inputs[] = {sound.left.data(), sound.right.data()}, *outputs[] = {left, right};
    (adds ? record->process : record->processReplacing)(record, inputs, outputs,
                                                        static_cast<int32_t>(sound.frames()));
}
