#include "tests/reference/BandSum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Reference {

using Complex = std::complex<double>;

/// Both sections of a Linkwitz-Riley filter of 4th order. K = tan(pi fc / fs): the bilinear transform of
/// 1 / (s^2 + sqrt(2) s + 1), as in every textbook.
static Complex linkwitzRiley(bool highPass, double cutoff, double frequency, double rate)
{
    const double k = std::tan(std::numbers::pi * cutoff / rate), root = std::numbers::sqrt2 * k;
    const double a0 = 1 + root + k * k;
    const double a1 = static_cast<float>(2 * (k * k - 1) / a0),
                 a2 = static_cast<float>((1 - root + k * k) / a0);
    const double gain = (highPass ? 1 : k * k) / a0;
    const Complex back = std::polar(1.0, -2 * std::numbers::pi * frequency / rate);
    const Complex zeros = highPass ? 1.0 - back : 1.0 + back;
    const Complex section = gain * zeros * zeros / (1.0 + back * (a1 + back * a2));
    return section * section;
}

Complex BandSum::band(int index, double frequency) const
{
    int used = 0;
    while (used < 3 && hz[used] < rate / 2) ++used;
    if (index > used) return 0;
    Complex response = 1;
    if (index < used) response *= linkwitzRiley(false, hz[index], frequency, rate);
    if (index > 0) response *= linkwitzRiley(true, hz[index - 1], frequency, rate);
    if (index > 0 && index < used) response *= 1 + 6 / std::pow(hz[index] / hz[index - 1], 3);
    return response;
}

Complex BandSum::at(double frequency) const
{
    return band(0, frequency) + band(1, frequency) + band(2, frequency) + band(3, frequency);
}

double BandSum::loudest(double frequency) const
{
    double most = 0;
    for (int b = 0; b < 4; ++b) most = std::max(most, std::abs(band(b, frequency)));
    return most;
}

} // namespace Reference
