#include "tests/signals/Signals.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "dsp/numerics/Math.h"

namespace Signals {

namespace Math = DSP::Math;

uint64_t Random::next()
{
    uint64_t z = state += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

double Random::uniform(double low, double high)
{
    return low + (high - low) * static_cast<double>(next() >> 11) * 0x1p-53;
}

float fromDb(double db) { return static_cast<float>(Math::pow(10.0, db / 20)); }

Audio silence(uint32_t frames) { return {std::vector<float>(frames), std::vector<float>(frames)}; }

/// Computes each channel with a function of the frame index.
template <class Left, class Right>
static Audio fill(uint32_t frames, Left left, Right right)
{
    Audio audio = silence(frames);
    for (uint32_t i = 0; i < frames; ++i) {
        audio.left[i] = static_cast<float>(left(i));
        audio.right[i] = static_cast<float>(right(i));
    }
    return audio;
}

Audio noise(uint64_t seed, uint32_t frames, double db)
{
    Random random(seed);
    const double level = fromDb(db);
    const auto sample = [&](uint32_t) { return random.uniform(-level, level); };
    return fill(frames, sample, sample);
}

/// Sine of a phase in cycles.
static double turn(double phase) { return Math::sin(2 * Math::kPi * (phase - std::floor(phase))); }

Audio sine(uint32_t rate, double hz, uint32_t frames, double db)
{
    const double level = fromDb(db), step = hz / rate;
    return fill(
        frames, [&](uint32_t i) { return level * turn(step * i); },
        [&](uint32_t i) { return level * turn(step * i + 0.2); });
}

Audio sweep(uint32_t rate, double fromHz, double toHz, uint32_t frames, double db)
{
    const double level = fromDb(db), growth = Math::exp(Math::log(toHz / fromHz) / frames);
    double hz = fromHz, phase = 0;
    Audio audio = silence(frames);
    for (uint32_t i = 0; i < frames; ++i, hz *= growth, phase += hz / rate) {
        audio.left[i] = static_cast<float>(level * turn(phase));
        audio.right[i] = static_cast<float>(level * turn(phase + 0.25));
    }
    return audio;
}

Audio squares(uint32_t rate, double hz, uint32_t frames, double db)
{
    const float level = fromDb(db);
    const double step = hz / rate;
    const auto wave = [](double phase) { return phase - std::floor(phase) < 0.5 ? 1.0f : -1.0f; };
    return fill(
        frames, [&](uint32_t i) { return level * wave(step * i); },
        [&](uint32_t i) { return 0.8f * level * wave(1.01 * step * i + 0.3); });
}

Audio impulses(uint64_t seed, uint32_t frames, double db)
{
    Random random(seed);
    Audio audio = silence(frames);
    for (auto *channel : {&audio.left, &audio.right}) {
        for (uint32_t at = random.below(50); at < frames; at += 1 + random.below(2000))
            (*channel)[at] = fromDb(db) * (random.chance(0.5) ? 1.0f : -1.0f);
    }
    return audio;
}

Audio bursts(uint64_t seed, uint32_t rate, uint32_t frames, double db)
{
    Random random(seed);
    Audio audio = silence(frames);
    const auto length = [&] { return 1 + static_cast<uint32_t>(rate * random.uniform(0.001, 0.05)); };
    for (uint32_t at = length(); at < frames;) {
        const uint32_t end = std::min(frames, at + length());
        const double level = fromDb(db - random.uniform(0, 30)),
                     step = random.uniform(20, 0.45 * rate) / rate;
        const bool tone = random.chance(0.5);
        for (uint32_t i = at; i < end; ++i) {
            audio.left[i] = static_cast<float>(level * (tone ? turn(step * i) : random.uniform(-1, 1)));
            audio.right[i] =
                static_cast<float>(level * (tone ? turn(1.3 * step * i) : random.uniform(-1, 1)));
        }
        at = end + length();
    }
    return audio;
}

Audio music(uint64_t seed, uint32_t rate, uint32_t frames, double db)
{
    Random random(seed);
    Audio audio = silence(frames);
    struct Voice {
        double step, phase, level, decay, pan;
    };
    std::array<Voice, 6> chord{};
    double drum = 0, drumPhase = 0, hiss = 0;
    const uint32_t beat = std::max(rate / 4, 1u);
    for (uint32_t i = 0; i < frames; ++i) {
        if (i % beat == 0) {
            const double root = 110.0 * Math::exp2(random.below(12) / 12.0);
            for (Voice &voice : chord) {
                const double hz = std::min(root * (1 + random.below(12)), 0.45 * rate);
                voice = {hz / rate, voice.phase, random.uniform(0.02, 0.15), 1 - random.uniform(2, 8) / rate,
                         random.uniform(0, 1)};
            }
            drum = random.chance(0.6) ? 0.5 : drum;
            hiss = 0.15;
        }
        double left = 0, right = 0;
        for (Voice &voice : chord) {
            const double sample = voice.level * turn(voice.phase += voice.step);
            left += sample * voice.pan;
            right += sample * (1 - voice.pan);
            voice.level *= voice.decay;
        }
        const double thump = drum * turn(drumPhase += (45 + 100 * drum) / rate);
        drum *= 1 - 12.0 / rate;
        hiss *= 1 - 40.0 / rate;
        audio.left[i] = static_cast<float>(left + thump + hiss * random.uniform(-1, 1));
        audio.right[i] = static_cast<float>(right + thump + hiss * random.uniform(-1, 1));
    }
    float peak = 1e-6f;
    for (auto *channel : {&audio.left, &audio.right})
        for (float sample : *channel) peak = std::max(peak, std::fabs(sample));
    for (auto *channel : {&audio.left, &audio.right})
        for (float &sample : *channel) sample *= fromDb(db) / peak;
    return audio;
}

Audio musicThenSilence(uint64_t seed, uint32_t rate, uint32_t frames, double db)
{
    return append(music(seed, rate, frames / 2, db), silence(frames - frames / 2));
}

Audio hostile(uint64_t seed, uint32_t rate, uint32_t frames)
{
    Random random(seed);
    Audio audio;
    while (audio.frames() < frames) {
        const uint32_t length = 1 + static_cast<uint32_t>(rate * random.uniform(0.001, 0.3));
        const double db = random.chance(0.7) ? 24 : random.uniform(-60, 24),
                     hz = random.uniform(5, 0.5 * rate);
        switch (random.below(6)) {
        case 0: audio = append(std::move(audio), noise(random.next(), length, db)); break;
        case 1: audio = append(std::move(audio), squares(rate, hz, length, db)); break;
        case 2: audio = append(std::move(audio), impulses(random.next(), length, db)); break;
        case 3: audio = append(std::move(audio), bursts(random.next(), rate, length, db)); break;
        case 4: audio = append(std::move(audio), sine(rate, hz, length, db)); break;
        default: audio = append(std::move(audio), silence(length)); break;
        }
    }
    audio.left.resize(frames);
    audio.right.resize(frames);
    return audio;
}

Audio mono(Audio audio)
{
    audio.right.clear();
    return audio;
}

Audio slice(const Audio &audio, uint32_t from, uint32_t frames)
{
    const auto cut = [&](const std::vector<float> &x) {
        return x.empty() ? x : std::vector<float>(x.begin() + from, x.begin() + from + frames);
    };
    return {cut(audio.left), cut(audio.right)};
}

Audio append(Audio before, const Audio &audio)
{
    before.left.insert(before.left.end(), audio.left.begin(), audio.left.end());
    before.right.insert(before.right.end(), audio.right.begin(), audio.right.end());
    return before;
}

Named any(uint64_t seed, uint32_t rate, uint32_t frames)
{
    Random random(seed);
    const double db = random.pick(std::array{-40.0, -12.0, -1.0, 6.0, 24.0});
    const double hz = random.uniform(30, 0.4 * rate);
    switch (random.below(8)) {
    case 0: return {"noise", noise(seed, frames, db)};
    case 1: return {"sine", sine(rate, hz, frames, db)};
    case 2: return {"sweep", sweep(rate, 20, 0.49 * rate, frames, db)};
    case 3: return {"squares", squares(rate, hz / 4, frames, db)};
    case 4: return {"bursts", bursts(seed, rate, frames, db)};
    case 5: return {"music", music(seed, rate, frames, db)};
    case 6: return {"music, then silence", musicThenSilence(seed, rate, frames, db)};
    default: return {"hostile", hostile(seed, rate, frames)};
    }
}

} // namespace Signals
