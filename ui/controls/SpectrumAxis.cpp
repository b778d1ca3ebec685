#include "ui/controls/SpectrumAxis.h"

#include <algorithm>
#include <cmath>

#include "dsp/numerics/Math.h"

namespace UI::Native {

namespace {

float octavesOf(float hz) { return static_cast<float>(DSP::Math::flooredLog2(hz)); }

int32_t rounded(float pixels)
{
    constexpr float kFar = 1e6f; // larger than any picture, but fits an int32_t
    return static_cast<int32_t>(std::lround(std::clamp(pixels, -kFar, kFar)));
}

} // namespace

SpectrumAxis::SpectrumAxis(int32_t width, int32_t height)
    : numColumns(width),
      numRows(height),
      freqScale(static_cast<float>(width) / (octavesOf(kHighestHz) - octavesOf(kLowestHz))),
      freqOffset(freqScale * octavesOf(kLowestHz))
{
}

int32_t SpectrumAxis::column(float hz) const { return rounded(octavesOf(hz) * freqScale - freqOffset); }

float SpectrumAxis::frequency(int32_t column) const
{
    return static_cast<float>(DSP::Math::exp2((static_cast<float>(column) + freqOffset) / freqScale));
}

int32_t SpectrumAxis::row(float magnitude) const
{
    constexpr float kHeightsPerDb = -1.0f / kRangeDb;
    const auto db = static_cast<float>(DSP::Math::linearToDecibels(magnitude));
    return std::clamp(rounded(static_cast<float>(numRows - 1) * db * kHeightsPerDb), 0, numRows - 1);
}

void SpectrumAxis::mapBins(uint32_t binCount, uint32_t samplingRate, Bins &bins) const
{
    bins.toColumn.assign(binCount, 0);
    bins.perColumn.assign(static_cast<size_t>(numColumns), 0);
    for (uint32_t i = 0; i < binCount; ++i) {
        const float hz =
            static_cast<float>(samplingRate) * 0.5f * static_cast<float>(i) / static_cast<float>(binCount);
        const int32_t x = hz >= kLowestHz ? column(hz) : -1;
        bins.toColumn[i] = x;
        if (x >= 0 && x < numColumns) ++bins.perColumn[static_cast<size_t>(x)];
    }
}

} // namespace UI::Native
