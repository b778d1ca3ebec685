#include "tests/fuzz/FuzzedEffect.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/signals/Signals.h"

void require(bool holds, const char *what)
{
    if (holds) return;
    std::fprintf(stderr, "must hold, and does not: %s\n", what);
    std::abort();
}

FuzzedEffect &FuzzedEffect::instance()
{
    static FuzzedEffect only;
    return only;
}

FuzzedEffect::FuzzedEffect()
{
    Signals::Random random(1);
    for (int32_t i = 0; i < effect->numParams; ++i) effect.set(i, random.real(0.1, 0.9));
    effect.switchOn();
    start = chunk();
}

void FuzzedEffect::reset()
{
    host.takeCalls();
    require(setChunk(start, false), "the effect takes its own chunk");
    require(chunk() == start, "a chunk comes back as it was loaded");
}

Bytes FuzzedEffect::chunk() const
{
    void *data = nullptr;
    const auto size = effect.dispatch(effGetChunk, 0, 0, &data);
    return Bytes(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
}

bool FuzzedEffect::setChunk(const Bytes &chunk, bool isPreset) const
{
    Bytes copy(chunk.begin(), chunk.end()); // without a spare byte, so that reading past the end shows
    return effect.dispatch(effSetChunk, isPreset, static_cast<intptr_t>(copy.size()), copy.data()) != 0;
}

std::vector<float> FuzzedEffect::parameters() const
{
    std::vector<float> values;
    for (int32_t i = 0; i < effect->numParams; ++i) values.push_back(effect.get(i));
    return values;
}

void FuzzedEffect::requireFiniteParameters() const
{
    for (const float value : parameters()) require(std::isfinite(value), "parameters are finite");
}

void FuzzedEffect::requireTextsThatFit() const
{
    constexpr size_t kMostDisplay = 23, kMostLabel = 7; // characters
    for (int32_t i = 0; i < effect->numParams; ++i) {
        for (const int32_t opcode : {effGetParamDisplay, effGetParamName})
            require(effect.text(opcode, i).size() <= kMostDisplay, "a parameter's text fits");
        require(effect.text(effGetParamLabel, i).size() <= kMostLabel, "a parameter's label fits");
    }
}

void FuzzedEffect::requireFiniteSound() const
{
    constexpr uint32_t kFrames = 1024;
    static const Audio in = Signals::hostile(1, 44100, kFrames);
    Audio out = in;
    effect.switchOff();
    effect.switchOn();
    float *channels[] = {const_cast<float *>(in.left.data()), const_cast<float *>(in.right.data()),
                         out.left.data(), out.right.data()};
    effect->processReplacing(effect.operator->(), channels, channels + 2, kFrames);
    for (const auto &channel : {out.left, out.right})
        require(std::ranges::all_of(channel, [](float x) { return std::isfinite(x); }),
                "the sound is finite");
}
