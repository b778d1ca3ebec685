#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/core.h>
#include <memory>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "bench/Clock.h"
#include "bench/Counting.h"
#include "bench/Load.h"
#include "bench/peer/Peer.h"

// tessarine_peer: times this effect and its nearest open-source peer alternately in one process, or runs the
// peer for an instruction counter.

namespace {

struct Options {
    std::vector<uint32_t> blocks = {64, 256, 512, 4096};
    uint32_t turns = 9;
    bool brickwall = false, count = false, meters = false;
};

/// Sets flush-to-zero and denormals-are-zero, as most hosts do: the peer may depend on it.
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

/// This effect and the peer at one block size, and their ns per frame in each turn.
struct Rivals {
    Rivals(const Bench::Lv2World &world, uint32_t blockFrames, bool brickwall)
        : block(blockFrames), load(block, brickwall, kMusicFrames), peer(world, block, kMusicFrames)
    {
        load.play(Bench::kMeasuredFrames);
        peer.play(Bench::kMeasuredFrames);
    }
    void takeTurns()
    {
        ours.push_back(timePerFrame(load));
        theirs.push_back(timePerFrame(peer));
    }

    static constexpr uint32_t kMusicFrames = 5 * Bench::kMeasuredFrames;
    const uint32_t block;
    Bench::Load load;
    Bench::Peer peer;
    std::vector<double> ours, theirs;
};

/// Prints one line per block size: frames, ns per frame of this effect and of the peer. The sizes alternate
/// too, so that a change of the machine's speed affects all of them.
void compare(const Bench::Lv2World &world, const Options &options)
{
    std::vector<std::unique_ptr<Rivals>> sizes;
    for (const uint32_t block : options.blocks)
        sizes.push_back(std::make_unique<Rivals>(world, block, options.brickwall));
    for (uint32_t turn = 0; turn < options.turns; ++turn)
        for (const auto &size : sizes) size->takeTurns();
    for (const auto &size : sizes)
        fmt::print("{} {:.2f} {:.2f}\n", size->block, median(size->ours), median(size->theirs));
}

/// Runs only the peer, for Callgrind.
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
    for (uint32_t i = 0; i < 5; ++i) {
        const std::string name = i < 4 ? fmt::format("band {}", i + 1) : "limiter";
        fmt::print("{:8} down to {:5.1f} dB\n", name, peer.leastGainsDb()[i]);
    }
}

} // namespace

int main(int argc, char **argv) // NOLINT(bugprone-exception-escape): ends with a message
{
    Options options;
    CLI::App app{
        "Compares the speed of this effect with its nearest open-source peer. Prints frames per block, ns "
        "per frame of this effect and ns per frame of the peer."};
    app.add_option("--blocks", options.blocks, "block sizes in frames, separated by commas")->delimiter(',');
    app.add_option("--turns", options.turns, "alternating measurements of each effect; prints the median");
    app.add_flag("--brickwall", options.brickwall, "limiter in brickwall mode");
    app.add_flag("--count", options.count, "play only the peer, for an instruction counter");
    app.add_flag("--meters", options.meters, "show the lowest gains of the peer's bands and limiter");
    CLI11_PARSE(app, argc, argv);

    flushDenormals();
    try {
        const Bench::Lv2World world;
        if (!options.count && !options.meters) compare(world, options);
        for (const uint32_t block : options.blocks) {
            if (options.count) count(world, block);
            if (options.meters) showMeters(world, block);
        }
    } catch (const std::exception &error) {
        fmt::print(stderr, "tessarine_peer: {}\n", error.what());
        return 1;
    }
    return 0;
}
