#include "apps/tessarine/loudness/LoudnessMeter.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <new>
#include <numeric>

#include "apps/tessarine/console/Failure.h"

namespace App {

namespace {

// EBU Tech 3341: momentary loudness over 400 ms, short-term loudness over 3 s, both updated every 100 ms
constexpr uint32_t kHopMs = 100;
constexpr size_t kMomentaryHops = 4, kShortTermHops = 30;
constexpr double kOffset = -0.691; // LUFS at a mean energy of 1

double toLoudness(double energy) { return kOffset + 10.0 * std::log10(energy); }
double toEnergy(double loudness) { return std::pow(10.0, (loudness - kOffset) / 10.0); }

double highest(const std::vector<double> &energies)
{
    return toLoudness(energies.empty() ? 0.0 : *std::ranges::max_element(energies));
}

/// Loudness range in LU after EBU Tech 3342: between the 10th and the 95th percentile of the short-term loudness, after
/// an absolute gate at -70 LUFS and a relative gate 20 LU below the mean. libebur128's own takes as long as all else.
double loudnessRange(std::vector<double> energies)
{
    std::erase_if(energies, [](double energy) { return energy < toEnergy(-70.0); });
    const double mean =
        std::accumulate(energies.begin(), energies.end(), 0.0) / static_cast<double>(energies.size());
    std::erase_if(energies, [mean](double energy) { return energy < 0.01 * mean; });
    if (energies.empty()) return 0.0;
    std::ranges::sort(energies);
    const auto percentile = [&](double share) {
        return energies[static_cast<size_t>(std::lround(share * static_cast<double>(energies.size() - 1)))];
    };
    return toLoudness(percentile(0.95)) - toLoudness(percentile(0.1));
}

} // namespace

LoudnessMeter::LoudnessMeter(uint32_t channels, uint32_t rate, Scope wanted)
    : scope(wanted),
      hop((rate + 5) / 10),
      state(ebur128_init(channels, rate, EBUR128_MODE_I)),
      peaks(channels, rate)
{
    if (!state)
        throw Failure(
            fmt::format("the loudness meter does not support {} Hz; convert the sample rate first", rate));
}

void LoudnessMeter::add(const float *interleaved, uint32_t frames)
{
    peaks.add(interleaved, frames);
    for (uint32_t done = 0; done < frames;) {
        const uint32_t count = std::min(frames - done, hop - inHop);
        addWeighted(interleaved + size_t{done} * state->channels, count);
        done += count;
        inHop += count;
        if (inHop == hop) closeHop();
    }
}

void LoudnessMeter::addWeighted(const float *interleaved, uint32_t frames)
{
    // libebur128 filters the channels one after the other. In short pieces the processor overlaps them, which saves a
    // third of the time.
    constexpr uint32_t kPiece = 8;
    for (uint32_t done = 0; done < frames; done += kPiece) {
        const uint32_t count = std::min(frames - done, kPiece);
        if (ebur128_add_frames_float(state.get(), interleaved + size_t{done} * state->channels, count) !=
            EBUR128_SUCCESS)
            throw std::bad_alloc();
    }
}

void LoudnessMeter::closeHop()
{
    inHop = 0;
    if (scope == Scope::integrated) return;
    double loudness = 0.0;
    ebur128_loudness_window(state.get(), kHopMs, &loudness);
    hopEnergies.push_back(toEnergy(loudness));
}

std::vector<double> LoudnessMeter::slidingMeans(size_t hops) const
{
    std::vector<double> means;
    for (size_t end = hops; end <= hopEnergies.size(); ++end) {
        const auto last = hopEnergies.begin() + static_cast<ptrdiff_t>(end);
        means.push_back(std::accumulate(last - static_cast<ptrdiff_t>(hops), last, 0.0) /
                        static_cast<double>(hops));
    }
    return means;
}

LoudnessMeter::Figures LoudnessMeter::figures()
{
    const std::vector<double> shortTerm = slidingMeans(kShortTermHops);
    Figures figures{.samplePeakDb = 20.0 * std::log10(peaks.samplePeak()),
                    .truePeakDb = 20.0 * std::log10(peaks.truePeak()),
                    .loudness = 0.0,
                    .range = loudnessRange(shortTerm),
                    .maxMomentary = highest(slidingMeans(kMomentaryHops)),
                    .maxShortTerm = highest(shortTerm)};
    ebur128_loudness_global(state.get(), &figures.loudness);
    return figures;
}

} // namespace App
