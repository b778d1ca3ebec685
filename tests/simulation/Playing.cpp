#include "tests/simulation/Playing.h"

#include <algorithm>
#include <array>

Audio anySound(Random &random, uint32_t frames)
{
    constexpr uint32_t kAll = 65536;
    static const std::array sounds = {Signals::music(1, 44100, kAll, 0), Signals::noise(2, kAll, 6),
                                      Signals::hostile(3, 44100, kAll), Signals::silence(kAll)};
    return Signals::slice(sounds[random.below(sounds.size())], random.below(kAll - frames), frames);
}

void playBlock(EffectInstance &effect, Random random)
{
    const std::scoped_lock playing(effect.playing);
    AEffect *const record = effect.record();
    if (!record) return;
    const uint32_t longest = random.pick(std::array{64u, 256u, 512u, 512u, 1024u, 8192u});
    const uint32_t frames = 1 + random.below(longest);
    const int32_t frameCount =
        random.chance(0.01) ? random.pick(std::array{0, -1, INT32_MIN}) : static_cast<int32_t>(frames);
    Audio in = anySound(random, frames), out = {std::vector(frames, 0.25f), std::vector(frames, 0.25f)};
    // A bypassed effect copies the odd sample; no other sample may become non-finite.
    const uint32_t oddAt = random.chance(0.005) ? random.below(frames) : UINT32_MAX;
    if (oddAt < frames) in.left[oddAt] = random.pick(kOddReals);

    // Not in place: an effect that writes nothing would leave the odd sample in the output.
    const bool inPlace = random.chance(0.5) && oddAt >= frames;
    float *channels[] = {in.left.data(), in.right.data(), out.left.data(), out.right.data()};
    if (random.chance(0.03)) channels[random.below(4)] = nullptr;
    float **const inputs = random.chance(0.005) ? nullptr : channels;
    float **const outputs = random.chance(0.005) ? nullptr : channels + (inPlace ? 0 : 2);
    (random.chance(0.1) ? record->process : record->processReplacing)(record, inputs, outputs, frameCount);

    for (const auto &channel : inPlace ? std::array{&in.left, &in.right} : std::array{&out.left, &out.right})
        for (uint32_t i = 0; i < frames; ++i)
            effect.require(std::isfinite((*channel)[i]) || i == oddAt, "the output is finite");
    Journal::blocks.add();
    Journal::frames.add(frames);
}

void automate(EffectInstance &effect, Random random)
{
    const std::scoped_lock automating(effect.automating);
    AEffect *const record = effect.record();
    if (!record) return;
    const auto index = static_cast<int32_t>(random.below(41)) - 1; // 0 to 38 are valid
    char text[256] = {};
    switch (const uint32_t what = random.below(64)) {
    case 0:
    case 1: return effect.switchTo(what == 1);
    case 2: effect.dispatch(effEditIdle); return; // some hosts call it outside the window thread
    case 3: effect.dispatch(effGetParamDisplay, index, 0, text); return;
    case 4: effect.dispatch(effGetParamName, index, 0, text); return;
    case 5:
        return effect.require(std::isfinite(record->getParameter(record, index)), "parameters are finite");
    default:
        record->setParameter(record, index, random.chance(0.3) ? anyReal(random) : random.real(-0.1, 1.1));
        Journal::valuesSet.add();
    }
}
