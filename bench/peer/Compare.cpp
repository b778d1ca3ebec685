#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/core.h>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "bench/Clock.h"
#include "bench/Counting.h"
#include "bench/Load.h"
#include "bench/peer/Peer.h"

// tessarine_peer: this effect and its nearest open peer by turns in one process, by the clock or by a counter
// of instructions.

namespace {

struct Options {
    std::vector<uint32_t> blocks = {64, 256, 512, 4096};
    uint32_t turns = 9;
    bool brickwall = false, count = false, meters = false;
};

/// The peer does not guard itself against denormals; hosts have the processor flush them.
void flushDenormals()
{
#if defined(__SSE2__)
    _mm_setcsr(_mm_getcsr() | 0x8040);
#endif
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

template <class Effect>
double timePerFrame(Effect &effect)
{
    constexpr uint32_t kFrames = 4 * Bench::kMeasuredFrames;
    const double start = Bench::processorTime();
    effect.play(kFrames);
    return (Bench::processorTime() - start) / kFrames;
}

/// One line: block, ns per frame of this effect and of the peer.
void compare(const Bench::Lv2World &world, uint32_t block, const Options &options)
{
    constexpr uint32_t kMusicFrames = 5 * Bench::kMeasuredFrames;
    Bench::Load load(block, options.brickwall, kMusicFrames);
    Bench::Peer peer(world, block, kMusicFrames);
    load.play(Bench::kMeasuredFrames);
    peer.play(Bench::kMeasuredFrames);
    std::vector<double> ours, theirs;
    for (uint32_t turn = 0; turn < options.turns; ++turn) {
        ours.push_back(timePerFrame(load));
        theirs.push_back(timePerFrame(peer));
    }
    fmt::print("{} {:.2f} {:.2f}\n", block, median(ours), median(theirs));
}

/// What Callgrind is to count: the peer alone.
void count(const Bench::Lv2World &world, uint32_t block)
{
    Bench::Peer peer(world, block, 2 * Bench::kMeasuredFrames);
    peer.play(Bench::kMeasuredFrames);
    const Bench::Counting counting;
    peer.play(Bench::kMeasuredFrames);
}

void showMeters(const Bench::Lv2World &world, uint32_t block)
{
    Bench::Peer peer(world, block, Bench::kMeasuredFrames);
    for (uint32_t done = 0; done < Bench::kMeasuredFrames; done += block) {
        peer.playBlock();
        peer.lookAtMeters();
    }
    for (const double db : peer.leastGainsDb()) fmt::print("{:.1f} dB\n", db);
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    CLI::App app{
        "Times this effect against its nearest open peer. Each line: frames of a block, ns per frame of this "
        "effect, ns per frame of the peer."};
    app.add_option("--blocks", options.blocks, "frames of a block")->delimiter(',');
    app.add_option("--turns", options.turns, "measurements of each, by turns; the median counts");
    app.add_flag("--brickwall", options.brickwall, "limiter in brickwall mode");
    app.add_flag("--count", options.count, "play the peer once for an instruction counter");
    app.add_flag("--meters", options.meters, "show the least gains of the peer's bands and limiter");
    CLI11_PARSE(app, argc, argv);

    flushDenormals();
    try {
        const Bench::Lv2World world;
        for (const uint32_t block : options.blocks) {
            if (options.count)
                count(world, block);
            else if (options.meters)
                showMeters(world, block);
            else
                compare(world, block, options);
        }
    } catch (const std::exception &error) {
        fmt::print(stderr, "tessarine_peer: {}\n", error.what());
        return 1;
    }
    return 0;
}
