#include "dsp/numerics/FilterDesign.h"

#include "dsp/numerics/Math.h"

namespace DSP {

namespace {

constexpr double kSqrtHalf = 0.70710678118654752440;

// Not std::complex: its multiplication and division may call library routines that differ between systems.
struct Complex {
    double re, im;
};
Complex operator+(Complex a, Complex b) { return {a.re + b.re, a.im + b.im}; }
Complex operator-(Complex a, Complex b) { return {a.re - b.re, a.im - b.im}; }
Complex operator*(Complex a, Complex b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
double squaredMagnitude(Complex a) { return a.re * a.re + a.im * a.im; }
Complex operator/(Complex a, Complex b)
{
    const double scale = 1.0 / squaredMagnitude(b);
    return {(a.re * b.re + a.im * b.im) * scale, (a.im * b.re - a.re * b.im) * scale};
}

// The polynomial z^2 + c1 z + c0; expand() computes it from its roots.
struct Monic {
    Complex c1, c0;
};
Monic expand(Complex p, Complex q) { return {Complex{0, 0} - (p + q), p * q}; }
Complex evaluate(const Monic &m, double z) { return Complex{z * z, 0} + m.c1 * Complex{z, 0} + m.c0; }

Complex bilinear(Complex s) { return (Complex{2, 0} + s) / (Complex{2, 0} - s); }

} // namespace

FilterDesign designSection(FilterType type, double alpha)
{
    const bool lowPass = type == FilterType::lowPass;
    const double w = 2.0 * Math::kPi * (Math::tan(Math::kPi * alpha) / Math::kPi);
    // the two Butterworth poles in the left half plane, at angles of 3/4 pi and 5/4 pi
    const Complex upper = {-kSqrtHalf, kSqrtHalf}, lower = {-kSqrtHalf, -kSqrtHalf};
    const auto place = [&](Complex pole) {
        return bilinear(lowPass ? Complex{w, 0} * pole : Complex{w, 0} / pole);
    };
    const double zero = lowPass ? -1.0 : 1.0;
    const Monic top = expand({zero, 0}, {zero, 0});
    const Monic bottom = expand(place(upper), place(lower));
    const Complex reference = evaluate(top, -zero) / evaluate(bottom, -zero);

    return {static_cast<float>(bottom.c1.re), static_cast<float>(bottom.c0.re),
            1.0 / squaredMagnitude(reference)};
}

} // namespace DSP
