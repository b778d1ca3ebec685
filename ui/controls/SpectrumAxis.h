#pragma once
#include <cstdint>
#include <vector>

namespace UI::Native {

/// Maps frequencies and levels to pixels in a spectrum of `width` by `height` pixels. Frequency is logarithmic, from
/// 20 Hz at the left to 20 kHz at the right. Level is linear in decibels, from 0 dB at the top to -80 dB at the
/// bottom.
class SpectrumAxis {
public:
    static constexpr float kLowestHz = 20.0f, kHighestHz = 20000.0f;
    static constexpr float kRangeDb = 80.0f;

    SpectrumAxis(int32_t width, int32_t height);

    int32_t column(float hz) const;
    /// Frequency in Hz at a column.
    float frequency(int32_t column) const;
    /// Converts a distance in columns to octaves.
    float octaves(int32_t columns) const { return static_cast<float>(columns) / freqScale; }
    /// Row of a linear magnitude, clamped to the picture.
    int32_t row(float magnitude) const;
    int32_t bottomRow() const { return numRows - 1; }
    int32_t columns() const { return numColumns; }

    /// Assignment of a spectrum's bins to columns.
    struct Bins {
        std::vector<int32_t> toColumn;   // by bin; -1 below the axis
        std::vector<uint32_t> perColumn; // number of bins, by column
    };
    void mapBins(uint32_t binCount, uint32_t samplingRate, Bins &bins) const;

private:
    const int32_t numColumns, numRows;
    const float freqScale, freqOffset; // pixels per octave; pixels from 1 Hz to the left edge
};

} // namespace UI::Native
