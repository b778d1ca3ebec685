#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include "bench/Clock.h"
#include "bench/Counting.h"
#include "bench/Load.h"
#include "dsp/kernels/Kernels.h"

// tessarine_count: plays the standard load for an instruction counter, or prints the time if there is none.

namespace {

struct Options {
    uint32_t block = 512, frames = Bench::kMeasuredFrames;
    bool brickwall = false, moveCutoffs = false, silence = false, eachBlock = false, showKernels = false;
};

/// Counts instructions of the effect only. Returns ns per frame of each piece of kMeasuredFrames, including
/// the meter readings.
std::vector<double> measure(Bench::Load &load, const Options &options)
{
    std::vector<double> pieces;
    double start = Bench::processorTime();
    for (uint32_t done = 0; done < options.frames;) {
        {
            const Bench::Counting counting;
            if (options.moveCutoffs) load.moveCutoff();
            load.playBlock();
        }
        if (options.eachBlock) Bench::Counting::endPart();
        load.lookAtMeters();
        done += options.block;
        if (done % Bench::kMeasuredFrames >= options.block) continue;
        const double now = Bench::processorTime();
        pieces.push_back((now - start) / Bench::kMeasuredFrames);
        start = now;
    }
    return pieces;
}

void printReductions(const Bench::Load &load)
{
    uint32_t band = 0;
    for (const Bench::Reductions &r : load.reductions()) {
        const std::string name = band < DSP::kBands ? fmt::format("band {}", band + 1) : "limiter";
        fmt::print("{:8} {:5.1f} dB on average, active {:3.0f} % of the time\n", name, r.meanDb,
                   100 * r.share);
        ++band;
    }
}

} // namespace

int main(int argc, char **argv) // NOLINT(bugprone-exception-escape): ends with a message
{
    Options options;
    CLI::App app{"Plays the standard load for an instruction counter; without one, prints ns per frame."};
    app.add_option("--block", options.block, "frames per block")->check(CLI::Range(1, 4096));
    app.add_option("--frames", options.frames, "frames to measure, after a warm-up of 65536 frames");
    app.add_flag("--brickwall", options.brickwall, "limiter in brickwall mode");
    app.add_flag("--cutoffs", options.moveCutoffs, "move a cutoff before every block");
    app.add_flag("--silence", options.silence, "measure silence after the music");
    app.add_flag("--kernels", options.showKernels, "print the kernels in use and exit");
    app.add_flag("--each-block", options.eachBlock, "write a count for every block");
    CLI11_PARSE(app, argc, argv);
    if (options.showKernels) {
        fmt::print("{}\n", DSP::Kernels::active().name);
        return 0;
    }

    const uint32_t music = options.silence ? Bench::kMeasuredFrames : Bench::kMeasuredFrames + options.frames;
    Bench::Load load(options.block, options.brickwall, music);
    load.play(Bench::kMeasuredFrames);
    load.setSilent(options.silence);
    const std::vector<double> pieces = measure(load, options);
    if (Bench::Counting::isWatched()) return 0;
    for (const double ns : pieces) fmt::print("{:.2f} ns per frame\n", ns);
    printReductions(load);
    return 0;
}
