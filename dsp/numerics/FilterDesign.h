#pragma once
namespace DSP {

enum class FilterType { lowPass, highPass };

/// One second-order section of which a Linkwitz-Riley filter of 4th order cascades two alike:
/// H(z) = (1 + z^-1)^2 / (1 + a1 z^-1 + a2 z^-2) for a low pass, (1 - z^-1)^2 above for a high pass. Taps are rounded
/// to 32 bits.
struct FilterDesign {
    float a1, a2;
    /// Brings the cascade of both sections to unity at 0 Hz (low pass) or at half the rate (high pass).
    double designGain;
};

/// Butterworth section of 2nd order by the bilinear transform with prewarped cutoff (Oppenheim and Schafer,
/// "Discrete-Time Signal Processing", ch. 7); two of them make the Linkwitz-Riley filter (S. Linkwitz, JAES
/// 24(1), 1976). `alpha` is cutoff / sample rate, between 0 and 0.5. In doubles, by our own functions.
FilterDesign designSection(FilterType type, double alpha);

} // namespace DSP
