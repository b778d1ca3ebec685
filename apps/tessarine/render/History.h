#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace App {

/// Measurements over one period of time.
struct Column {
    static constexpr int kGains = 5; // four bands, then the limiter
    static constexpr int kLimiter = 4;

    uint64_t frames = 0;
    float peakIn = 0.0f, peakOut = 0.0f; // sample peak of both channels, linear
    double squaresIn = 0.0,
           squaresOut = 0.0; // sum over all frames of the channels' mean square
    std::array<float, kGains> leastGain = {1.0f, 1.0f, 1.0f, 1.0f, 1.0f}; // lowest gain, linear
    std::array<double, kGains> gainDbFrames{}; // sum of the gain in dB over all frames

    void merge(const Column &later);
    /// Root mean square, linear.
    double rmsIn() const;
    double rmsOut() const;
    double leastGainDb(int gain) const;
    double meanGainDb(int gain) const;
};

/// Stores measurements of a file of any length in at most kMostColumns columns. When all columns are full,
/// merges neighbours in pairs and doubles the number of measurements per column.
class History {
public:
    static constexpr size_t kMostColumns = 2048;

    void add(const Column &measured);

    /// In chronological order. All columns are about equally long, except that the last may be shorter.
    const std::vector<Column> &columns() const { return list; }
    const Column &total() const { return sum; }

private:
    void mergeNeighbours();

    std::vector<Column> list;
    Column sum;
    uint32_t perColumn = 1; // measurements in a full column
    uint32_t inLast = 0;    // measurements in the last column
};

} // namespace App
