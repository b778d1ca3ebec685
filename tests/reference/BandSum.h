#pragma once
#include <complex>
#include <cstdint>

namespace Reference {

/// Response of the four bands together, from the cutoffs alone: closed forms of Butterworth sections,
/// evaluated on the unit circle. Feedback taps are rounded to 32 bits, as the filters hold them.
class BandSum {
public:
    BandSum(const float (&cutoffsHz)[3], uint32_t sampleRate)
        : hz{cutoffsHz[0], cutoffsHz[1], cutoffsHz[2]}, rate(sampleRate)
    {
    }
    std::complex<double> at(double frequencyHz) const;
    /// Magnitude of the loudest band there.
    double loudest(double frequencyHz) const;

private:
    std::complex<double> band(int index, double frequencyHz) const;

    const double hz[3];
    const double rate;
};

} // namespace Reference
