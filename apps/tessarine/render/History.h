#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace App {

/// Measurements over one stretch of time.
struct Column {
    static constexpr int kGains = 5; // four bands, then the limiter
    static constexpr int kLimiter = 4;

    uint64_t frames = 0;
    float peakIn = 0.0f, peakOut = 0.0f;      // largest magnitude of both channels
    double squaresIn = 0.0, squaresOut = 0.0; // sum over the frames of the channels' mean square
    std::array<float, kGains> leastGain = {1.0f, 1.0f, 1.0f, 1.0f, 1.0f}; // factors
    std::array<double, kGains> gainDbFrames{}; // sum over the frames of the gain in dB

    void merge(const Column &later);
    /// Root mean square, linear.
    double rmsIn() const;
    double rmsOut() const;
    double leastGainDb(int gain) const;
    double meanGainDb(int gain) const;
};

/// The measurements over a file of any length in at most kMostColumns columns: when they are full, neighbours
/// become one column, and each new column takes twice as many measurements.
class History {
public:
    static constexpr size_t kMostColumns = 2048;

    void add(const Column &measured);

    /// In the order of time; all of about the same length, the last may be shorter.
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
