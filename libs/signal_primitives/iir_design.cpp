// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <array>
#include <cmath>
#include <complex>
#include <numbers>

// Classical design (Oppenheim and Schafer, Discrete-Time Signal Processing, 7.2 and appendix B):
//
// 1. Poles of the analogue low-pass of cut-off 1.
// 2. The cut-off moves to tan(pi f), which the bilinear transform puts at f; the high-pass takes
//    the reciprocal poles and its zeros at s = 0.
// 3. s = (1 - 1/z) / (1 + 1/z): a pole p gives the factor (1 -+ 1/z) / ((1 - p) - (1 + p) / z).
// 4. The factors are multiplied out. In extended precision, as the roots of the result crowd around
//    z = 1 for a low cut-off and every lost bit moves them.

namespace
{
using Real = long double;
using Complex = std::complex<Real>;

constexpr int kMaxOrder = 12;
constexpr Real kPi = std::numbers::pi_v<Real>;

enum class Band { kLow, kHigh };

/// Where the poles of the prototype lie: on an ellipse with these half axes, a circle for
/// Butterworth; and the response at 0.
struct Prototype
{
    Real realAxis = 1;
    Real imagAxis = 1;
    Real gainAtZero = 1;
};

Prototype chebyshev(Real rippleDb, int order)
{
    const Real epsilon = std::sqrt(std::pow(Real(10), rippleDb / 10) - 1);
    const Real mu = std::asinh(1 / epsilon) / order;
    return {std::sinh(mu), std::cosh(mu),
        order % 2 == 0 ? 1 / std::sqrt(1 + epsilon * epsilon) : Real(1)};
}

// k = 0..order-1, in the left half plane.
Complex prototypePole(const Prototype &prototype, int k, int order)
{
    const Real angle = kPi * (2 * k + 1) / (2 * order);
    return {-prototype.realAxis * std::sin(angle), prototype.imagAxis * std::cos(angle)};
}

/// Ascending powers of 1/z.
using Polynomial = std::array<Complex, kMaxOrder + 1>;

// Multiplies a polynomial of the given degree by 1 + coefficient / z.
void appendFactor(Polynomial &polynomial, int degree, Complex coefficient)
{
    for (int i = degree + 1; i > 0; --i)
        polynomial[i] += coefficient * polynomial[i - 1];
}

void design(const Prototype &prototype, Real cutOff, int order, Band band, double *taps)
{
    const Real warped = std::tan(kPi * cutOff);
    Polynomial numerator{1};
    Polynomial denominator{1};
    Complex gain = prototype.gainAtZero;
    for (int k = 0; k < order; ++k) {
        const Complex pole = prototypePole(prototype, k, order);
        const Complex p = band == Band::kLow ? warped * pole : warped / pole;
        gain *= (band == Band::kLow ? -p : Complex(1)) / (Real(1) - p);
        appendFactor(numerator, k, band == Band::kLow ? 1 : -1);
        appendFactor(denominator, k, -(Real(1) + p) / (Real(1) - p));
    }
    // Poles come in conjugate pairs: what is left of the imaginary parts is rounding.
    for (int i = 0; i <= order; ++i) {
        taps[i] = static_cast<double>((gain * numerator[i]).real());
        taps[order + 1 + i] = static_cast<double>(denominator[i].real());
    }
}

IppStatus checkedDesign(
    double cutOff, double ripple, int order, double *taps, IppsIIRFilterType type, Band band)
{
    if (taps == nullptr)
        return ippStsNullPtrErr;
    if (order < 1 || order > kMaxOrder)
        return ippStsIIRGenOrderErr;
    if (!(cutOff > 0.0 && cutOff < 0.5))
        return ippStsFilterFrequencyErr;
    switch (type) {
    case ippButterworth:
        design({}, cutOff, order, band, taps);
        return ippStsNoErr;
    case ippChebyshev1:
        if (!(ripple > 0.0))
            return ippStsBadArgErr;
        design(chebyshev(ripple, order), cutOff, order, band, taps);
        return ippStsNoErr;
    }
    return ippStsBadArgErr;
}
} // namespace

IppStatus ippsIIRGenLowpass_64f(
    Ipp64f rFreq, Ipp64f ripple, int order, Ipp64f *pTaps, IppsIIRFilterType filterType)
{
    return checkedDesign(rFreq, ripple, order, pTaps, filterType, Band::kLow);
}

IppStatus ippsIIRGenHighpass_64f(
    Ipp64f rFreq, Ipp64f ripple, int order, Ipp64f *pTaps, IppsIIRFilterType filterType)
{
    return checkedDesign(rFreq, ripple, order, pTaps, filterType, Band::kHigh);
}
