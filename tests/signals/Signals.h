#pragma once
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

/// Test audio; `right` is empty for mono.
struct Audio {
    std::vector<float> left, right;

    uint32_t frames() const { return static_cast<uint32_t>(left.size()); }
    bool stereo() const { return !right.empty(); }
    float *rightOrNull() { return right.empty() ? nullptr : right.data(); }
    const float *rightOrNull() const { return right.empty() ? nullptr : right.data(); }
    bool operator==(const Audio &) const = default;
};

/// Test signals, bit-exact on every system. Levels are peaks in dBFS. The left and right channels differ.
namespace Signals {

/// SplitMix64, which gives the same sequence with every standard library (Steele, Lea and Flood, "Fast Splittable
/// Pseudorandom Number Generators", 2014).
class Random {
public:
    explicit Random(uint64_t seed) : state(seed) { state = next(); }
    uint64_t next();
    double uniform(double low, double high);
    float real(double low, double high) { return static_cast<float>(uniform(low, high)); }
    uint32_t below(uint32_t count) { return static_cast<uint32_t>(next() % count); }
    bool chance(double probability) { return uniform(0, 1) < probability; }
    template <class List>
    auto pick(const List &list)
    {
        return std::data(list)[below(static_cast<uint32_t>(std::size(list)))];
    }

private:
    uint64_t state;
};

float fromDb(double db);

Audio silence(uint32_t frames);
Audio noise(uint64_t seed, uint32_t frames, double db);
Audio sine(uint32_t rate, double hz, uint32_t frames, double db);
/// Exponential sine sweep.
Audio sweep(uint32_t rate, double fromHz, double toHz, uint32_t frames, double db);
Audio squares(uint32_t rate, double hz, uint32_t frames, double db);
/// Single samples of random sign, 1 to 2000 frames apart.
Audio impulses(uint64_t seed, uint32_t frames, double db);
/// Noise and tones of 1 to 50 ms, each preceded by silence.
Audio bursts(uint64_t seed, uint32_t rate, uint32_t frames, double db);
/// Decaying chords, a drum and hiss.
Audio music(uint64_t seed, uint32_t rate, uint32_t frames, double db);
Audio musicThenSilence(uint64_t seed, uint32_t rate, uint32_t frames, double db);
/// Short pieces of the signals above, mostly at +24 dBFS: hard to limit.
Audio hostile(uint64_t seed, uint32_t rate, uint32_t frames);

Audio mono(Audio audio);
Audio slice(const Audio &audio, uint32_t from, uint32_t frames);
/// Appends `audio` to `before`.
Audio append(Audio before, const Audio &audio);

struct Named {
    std::string name;
    Audio audio;
};
/// Returns a random signal at a random level.
Named any(uint64_t seed, uint32_t rate, uint32_t frames);

} // namespace Signals
