#include "tests/realtime/AudioThread.h"

#include <algorithm>
#include <array>

#include "tests/realtime/Controls.h"

namespace {

constexpr uint32_t kSoundFrames = 65536, kLongest = PlayedEffect::kMostFrames;

const Audio &anySound(Signals::Random &random)
{
    static const std::array sounds = {
        Signals::music(1, 44100, kSoundFrames, 0), Signals::noise(2, kSoundFrames, 6),
        Signals::hostile(3, 44100, kSoundFrames), Signals::silence(kSoundFrames)};
    return sounds[random.below(sounds.size())];
}

} // namespace

void AudioThread::run(Controls &controls, const std::atomic<bool> &stopping, bool filterOnly)
{
    ++figures.threads;
    figures.way = Watch::arm(filterOnly);
    if (figures.way != Watch::Way::none) {
        figures.controlsFound = controls.run() && figures.controlsFound;
        for (int i = 0; i < kWarmBlocks; ++i)
            for (const bool adds : {false, true}) play(kLongest, adds);
    }
    warm = true;
    if (figures.way == Watch::Way::none) return;
    while (!stopping) {
        const uint32_t size = random.pick(std::array{16u, 64u, 128u, 256u, 512u, 1024u, kLongest});
        playWatched(static_cast<int32_t>(random.chance(0.5) ? size : 16 + random.below(size - 15)));
    }
}

void AudioThread::playWatched(int32_t frames)
{
    const Audio &sound = anySound(random);
    const auto start = static_cast<ptrdiff_t>(random.below(kSoundFrames - kLongest));
    std::copy_n(sound.left.begin() + start, frames, channels[0]);
    std::copy_n(sound.right.begin() + start, frames, channels[1]);
    const bool adds = random.chance(0.1), sets = random.chance(0.25);
    const uint64_t waits = figures.counts.waits;
    {
        const Watch::Scope scope(figures.counts);
        if (sets) effect.automate(random); // as many hosts do between blocks
        play(frames, adds);
    }
    ++figures.blocks;
    figures.frames += static_cast<uint64_t>(frames);
    figures.valuesSet += sets;
    figures.bypassedBlocks += effect.options().getBypass();
    figures.waitingBlocks += figures.counts.waits != waits;
}

void AudioThread::play(int32_t frames, bool adds)
{
    AEffect *const record = effect.record();
    float *pointers[] = {channels[0], channels[1], channels[2], channels[3]};
    (adds ? record->process : record->processReplacing)(record, pointers, pointers + 2, frames);
}
