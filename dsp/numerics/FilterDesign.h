#pragma once
namespace DSP {

enum class FilterType { lowPass, highPass };

/// Second-order section; two identical ones in cascade form a fourth-order Linkwitz-Riley filter.
/// H(z) = (1 + z^-1)^2 / (1 + a1 z^-1 + a2 z^-2) for a low pass; the numerator of a high pass is (1 - z^-1)^2.
/// a1 and a2 are rounded to 32 bits.
struct FilterDesign {
    float a1, a2;
    /// Gives both sections together unity gain at 0 Hz (low pass) or Nyquist (high pass).
    double designGain;
};

/// Designs a second-order Butterworth section by the bilinear transform with prewarped cutoff (Oppenheim and Schafer,
/// "Discrete-Time Signal Processing", ch. 7). Two of them form the Linkwitz-Riley filter (S. Linkwitz, JAES 24(1),
/// 1976). `alpha` is cutoff / sample rate, between 0 and 0.5.
FilterDesign designSection(FilterType type, double alpha);

} // namespace DSP
