#include "apps/tessarine/render/History.h"

#include <algorithm>
#include <cmath>

namespace App {

namespace {

double rms(double squares, uint64_t frames)
{
    return frames == 0 ? 0.0 : std::sqrt(squares / static_cast<double>(frames));
}

} // namespace

void Column::merge(const Column &later)
{
    frames += later.frames;
    peakIn = std::max(peakIn, later.peakIn);
    peakOut = std::max(peakOut, later.peakOut);
    squaresIn += later.squaresIn;
    squaresOut += later.squaresOut;
    for (size_t i = 0; i < kGains; ++i) {
        leastGain[i] = std::min(leastGain[i], later.leastGain[i]);
        gainDbFrames[i] += later.gainDbFrames[i];
    }
}

double Column::rmsIn() const { return rms(squaresIn, frames); }

double Column::rmsOut() const { return rms(squaresOut, frames); }

double Column::leastGainDb(int gain) const { return 20.0 * std::log10(leastGain[static_cast<size_t>(gain)]); }

double Column::meanGainDb(int gain) const
{
    return frames == 0 ? 0.0 : gainDbFrames[static_cast<size_t>(gain)] / static_cast<double>(frames);
}

void History::add(const Column &measured)
{
    sum.merge(measured);
    if (inLast > 0 && inLast < perColumn) {
        list.back().merge(measured);
        ++inLast;
        return;
    }
    if (list.size() == kMostColumns) mergeNeighbours();
    list.push_back(measured);
    inLast = 1;
}

void History::mergeNeighbours()
{
    for (size_t i = 0; i < list.size() / 2; ++i) {
        Column pair = list[2 * i];
        pair.merge(list[2 * i + 1]);
        list[i] = pair;
    }
    list.resize(list.size() / 2);
    perColumn *= 2;
}

} // namespace App
