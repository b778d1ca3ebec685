#include <benchmark/benchmark.h>

#include "bench/Chain.h"
#include "dsp/kernels/Kernels.h"

// tessarine_bench: Google Benchmark cases for each stage and for the whole effect. They use the kernels that
// TESSARINE_ISA or the processor selects.

namespace Bench {
namespace {

/// Sounds that a stage processes in place, block by block. At the end they are restored while the clock is
/// paused.
struct Tracks {
    explicit Tracks(std::vector<Audio> sounds)
        : fresh(std::move(sounds)), used(fresh), left(fresh.size()), right(left)
    {
    }
    /// Advances to the next block of `frames`.
    void next(uint32_t frames, benchmark::State &state)
    {
        if (position + frames > fresh[0].frames()) {
            state.PauseTiming();
            used = fresh;
            position = 0;
            state.ResumeTiming();
        }
        for (size_t track = 0; track < used.size(); ++track) {
            left[track] = used[track].left.data() + position;
            right[track] = used[track].right.data() + position;
        }
        position += frames;
    }

    std::vector<Audio> fresh, used;
    std::vector<float *> left, right; // the current block of each track
    uint32_t position = 0;
};

const Audio &piece()
{
    static const Audio sound = music(kMeasuredFrames);
    return sound;
}

/// Music about 9 dB above the limiter's threshold, as in the chain.
const Audio &loudPiece()
{
    static const Audio sound = [] {
        Audio loud = piece();
        for (auto *channel : {&loud.left, &loud.right})
            for (float &sample : *channel) sample *= 1.5f;
        return loud;
    }();
    return sound;
}

constexpr DSP::Now kNow = {kRate, 0, 50};

DSP::Bands bandsOf(std::vector<Audio> &sounds)
{
    DSP::Bands pointers;
    for (int b = 0; b < DSP::kBands; ++b) {
        pointers.left[b] = sounds[b].left.data();
        pointers.right[b] = sounds[b].right.data();
    }
    return pointers;
}

const std::vector<Audio> &bands()
{
    static const std::vector<Audio> sounds = [] {
        std::vector<Audio> split(DSP::kBands, Signals::silence(kMeasuredFrames));
        Audio sound = piece();
        Chain chain;
        chain.transformHandle().crossOver()->run(
            kNow, {kMeasuredFrames, sound.left.data(), sound.right.data(), bandsOf(split)});
        return split;
    }();
    return sounds;
}

/// Runs one block per iteration; the benchmark's first argument is the block size in frames.
template <class Block>
void overTracks(benchmark::State &state, const std::vector<Audio> &sounds, Block block)
{
    Tracks tracks(sounds);
    const auto frames = static_cast<uint32_t>(state.range(0));
    for (auto _ : state) {
        tracks.next(frames, state);
        block(frames, tracks.left.data(), tracks.right.data());
    }
    state.counters["per frame"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * frames,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

template <class Before>
void splitAfter(benchmark::State &state, Before before)
{
    Chain chain;
    DSP::CrossOver &crossOver = *chain.transformHandle().crossOver();
    std::vector<Audio> out(DSP::kBands, Signals::silence(static_cast<uint32_t>(state.range(0))));
    const DSP::Bands pointers = bandsOf(out);
    overTracks(state, {piece()}, [&](uint32_t frames, float **left, float **right) {
        before(crossOver);
        crossOver.run(kNow, {frames, left[0], right[0], pointers});
    });
}

void split(benchmark::State &state)
{
    splitAfter(state, [](DSP::CrossOver &) {});
}

void splitWhileFading(benchmark::State &state)
{
    splitAfter(state, [high = false](DSP::CrossOver &crossOver) mutable {
        crossOver.setCutoff(1, (high = !high) ? 1100.0f : 1000.0f);
    });
}

void compress(benchmark::State &state)
{
    Chain chain;
    overTracks(state, bands(), [&](uint32_t frames, float **left, float **right) {
        DSP::Bands pointers;
        std::copy_n(left, DSP::kBands, pointers.left);
        std::copy_n(right, DSP::kBands, pointers.right);
        chain.transformHandle().dynamics()->run(kNow, {frames, left[0], right[0], pointers});
    });
}

template <bool brickwall>
void limit(benchmark::State &state)
{
    Chain chain(brickwall);
    overTracks(state, {loudPiece()}, [&](uint32_t frames, float **left, float **right) {
        chain.transformHandle().maximizer()->run(kNow, {frames, left[0], right[0]});
    });
}

void gain(benchmark::State &state)
{
    Chain chain;
    chain.transformHandle().gain()->setGain(-3);
    overTracks(state, {piece()}, [&](uint32_t frames, float **left, float **right) {
        chain.transformHandle().gain()->run(kNow, {frames, left[0], right[0]});
    });
}

void levelMeter(benchmark::State &state)
{
    Chain chain;
    overTracks(state, {piece()}, [&](uint32_t frames, float **left, float **right) {
        chain.transformHandle().level()->measure(frames, left[0], right[0]);
    });
}

/// All four spectra, as in the chain.
void spectra(benchmark::State &state)
{
    Chain chain;
    overTracks(state, bands(), [&](uint32_t frames, float **left, float **right) {
        for (uint32_t b = 0; b < DSP::kBands; ++b)
            chain.transformHandle().spectrum(b)->feed(frames, left[b], right[b]);
    });
}

template <bool brickwall>
void chainOnly(benchmark::State &state)
{
    Chain chain(brickwall);
    Audio out = Signals::silence(static_cast<uint32_t>(state.range(0)));
    overTracks(state, {piece()}, [&](uint32_t frames, float **left, float **right) {
        chain.transform(frames, left[0], right[0], out.left.data(), out.right.data());
    });
}

/// The whole effect, called through its AEffect record as by a host.
template <bool brickwall>
void effect(benchmark::State &state)
{
    Load load(static_cast<uint32_t>(state.range(0)), brickwall, kMeasuredFrames);
    overTracks(state, {piece()}, [&](uint32_t, float **, float **) { load.playBlock(); });
}

void stageBlocks(benchmark::internal::Benchmark *benchmark) { benchmark->Arg(64)->Arg(512); }
void allBlocks(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(64)->Arg(256)->Arg(512)->Arg(4096);
}

BENCHMARK(split)->Apply(stageBlocks);
BENCHMARK(splitWhileFading)->Apply(stageBlocks);
BENCHMARK(compress)->Apply(stageBlocks);
BENCHMARK(limit<false>)->Name("limitSoft")->Apply(stageBlocks);
BENCHMARK(limit<true>)->Name("limitBrickwall")->Apply(stageBlocks);
BENCHMARK(gain)->Apply(stageBlocks);
BENCHMARK(levelMeter)->Apply(stageBlocks);
BENCHMARK(spectra)->Apply(stageBlocks);
BENCHMARK(chainOnly<false>)->Name("chainSoft")->Apply(allBlocks);
BENCHMARK(chainOnly<true>)->Name("chainBrickwall")->Apply(allBlocks);
BENCHMARK(effect<false>)->Name("effectSoft")->Apply(allBlocks);
BENCHMARK(effect<true>)->Name("effectBrickwall")->Apply(allBlocks);

} // namespace
} // namespace Bench

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::AddCustomContext("kernels", DSP::Kernels::active().name);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
