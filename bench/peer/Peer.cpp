#include "bench/peer/Peer.h"

#include <algorithm>
#include <cmath>

#include "bench/Load.h"

namespace Bench {

namespace {
constexpr char kCompressor[] = "http://calf.sourceforge.net/plugins/MultibandCompressor";
constexpr char kLimiter[] = "http://calf.sourceforge.net/plugins/Limiter";
constexpr uint32_t kBands = 4;
} // namespace

Lv2Effect::Settings Peer::compressorSettings()
{
    Lv2Effect::Settings settings = {
        {"mode", 0}, // 4th order
        {"freq0", 120},
        {"freq1", 1000},
        {"freq2", 6000},
        // the gain of the standard load, so that the limiter is active
        {"level_out", Signals::fromDb(12)},
    };
    for (uint32_t band = 0; band < kBands; ++band) {
        const auto set = [&](const char *name, float value) {
            settings[name + std::to_string(band)] = value;
        };
        set("bypass", 0); // by default the bands are bypassed
        set("threshold", Signals::fromDb(-30));
        set("ratio", 4);
        set("attack", 10);
        set("release", 100);
        set("detection", 1); // peak
    }
    return settings;
}

Peer::Peer(const Lv2World &world, uint32_t blockFrames, uint32_t musicFrames)
    : block(blockFrames),
      sound(music(musicFrames)),
      between(Signals::silence(blockFrames)),
      output(Signals::silence(blockFrames)),
      compressor(world, kCompressor, kRate, compressorSettings()),
      limiter(world, kLimiter, kRate, {{"limit", Signals::fromDb(-6)}, {"auto_level", 0}})
{
}

void Peer::playBlock()
{
    float *const in[] = {sound.left.data() + position, sound.right.data() + position};
    float *const middle[] = {between.left.data(), between.right.data()};
    float *const out[] = {output.left.data(), output.right.data()};
    compressor.run(in, middle, block);
    limiter.run(middle, out, block);
    position += block;
    if (position + block > sound.frames()) position = 0;
}

void Peer::play(uint32_t frames)
{
    for (uint32_t done = 0; done < frames; done += block) playBlock();
}

void Peer::lookAtMeters()
{
    const auto look = [&](uint32_t i, float gain) {
        leastDb[i] = std::min(leastDb[i], 20 * std::log10(std::max<double>(gain, 1e-5)));
    };
    for (uint32_t band = 0; band < kBands; ++band)
        look(band, compressor.control("compression" + std::to_string(band)));
    look(kBands, limiter.control("att"));
}

} // namespace Bench
