#include "tests/soak/AudioThread.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/soak/Journal.h"

namespace {

constexpr uint32_t kMostFrames = 8192;

using Limits = std::numeric_limits<float>;
constexpr float kOddSamples[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(),
                                 Limits::denorm_min()};

} // namespace

/// All choices of a block, drawn whatever comes of them.
struct AudioThread::Block {
    int32_t frames;
    uint32_t sound, start, oddPlace;
    float oddSample;
    bool odd, inPlace, adds;
};

AudioThread::AudioThread(Studio &where, uint64_t seed, uint32_t first, uint32_t last)
    : studio(where), random(seed), from(first), to(last)
{
    for (auto &channel : channels) channel.resize(kMostFrames);
}

void AudioThread::step()
{
    for (uint32_t i = from; i < to; ++i) {
        const Block block = draw();
        SoakedEffect &effect = studio.effect(i);
        const std::scoped_lock playing(effect.playing);
        if (effect.record()) play(effect, block);
    }
}

AudioThread::Block AudioThread::draw()
{
    const uint32_t longest = random.pick(std::array{64u, 256u, 512u, 512u, 1024u, kMostFrames});
    const int32_t frames = random.chance(0.01) ? random.pick(std::array{0, -1, INT32_MIN})
                                               : static_cast<int32_t>(1 + random.below(longest));
    return {.frames = frames,
            .sound = random.below(static_cast<uint32_t>(studio.sounds.size())),
            .start = random.below(Studio::kSoundFrames - kMostFrames),
            .oddPlace = random.below(kMostFrames),
            .oddSample = random.pick(kOddSamples),
            .odd = random.chance(0.005),
            .inPlace = random.chance(0.5),
            .adds = random.chance(0.1)};
}

void AudioThread::play(SoakedEffect &effect, const Block &block)
{
    const auto frames = static_cast<ptrdiff_t>(std::max(block.frames, 0));
    const Audio &sound = studio.sounds[block.sound];
    const auto start = static_cast<ptrdiff_t>(block.start);
    std::copy_n(sound.left.begin() + start, frames, channels[0].begin());
    std::copy_n(sound.right.begin() + start, frames, channels[1].begin());
    // A bypassed effect hands it on; none may make more of it.
    const uint32_t oddAt = frames > 0 ? block.oddPlace % static_cast<uint32_t>(frames) : 0;
    if (block.odd && frames > 0) channels[0][oddAt] = block.oddSample;
    for (int i : {2, 3}) std::fill_n(channels[i].begin(), frames, 0.25f);

    // Where the effect writes nothing and is to write in place, an odd sample may stay.
    const bool inPlace = block.inPlace && !block.odd;
    float *pointers[] = {channels[0].data(), channels[1].data(), channels[2].data(), channels[3].data()};
    AEffect *const record = effect.record();
    (block.adds ? record->process : record->processReplacing)(record, pointers, pointers + (inPlace ? 0 : 2),
                                                              block.frames);
    for (const int i : inPlace ? std::array{0, 1} : std::array{2, 3})
        for (uint32_t at = 0; at < static_cast<uint32_t>(frames); ++at)
            Journal::require(std::isfinite(channels[i][at]) || (block.odd && at == oddAt),
                             "the sound is finite", effect.number);
    ++Journal::counts.blocks;
    Journal::counts.frames += static_cast<uint64_t>(frames);
}
