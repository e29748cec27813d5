// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace test
{
namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;

// Turns to radians in -pi..pi; the product is split exactly so that n may be large.
double angle(double frequency, long long n)
{
    const long double turns = static_cast<long double>(frequency) * static_cast<long double>(n);
    return kTwoPi * static_cast<double>(turns - std::round(turns));
}

// A not-a-number counts as an infinite error, so that it cannot pass a bound.
void raise(double &worst, double error)
{
    if (!(std::abs(error) <= worst))
        worst = std::isnan(error) ? std::numeric_limits<double>::infinity() : std::abs(error);
}

double blackmanHarris(int n, int length)
{
    const double x = kTwoPi * (n + 0.5) / length;
    return 0.35875 - 0.48829 * std::cos(x) + 0.14128 * std::cos(2 * x) - 0.01168 * std::cos(3 * x);
}
} // namespace

std::vector<COMPLEX> noise(int length, unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    std::vector<COMPLEX> out(static_cast<std::size_t>(length));
    for (COMPLEX &sample : out) {
        sample.re = uniform(generator);
        sample.im = uniform(generator);
    }
    return out;
}

std::vector<COMPLEX> tone(
    int length, double frequency, double amplitude, double phase, long long firstSample)
{
    std::vector<COMPLEX> out(static_cast<std::size_t>(length));
    for (int n = 0; n < length; ++n) {
        const double a = angle(frequency, firstSample + n) + phase;
        out[static_cast<std::size_t>(n)] = {amplitude * std::cos(a), amplitude * std::sin(a)};
    }
    return out;
}

void add(std::vector<COMPLEX> &a, const std::vector<COMPLEX> &b)
{
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        a[i].re += b[i].re;
        a[i].im += b[i].im;
    }
}

double maxError(const std::vector<COMPLEX> &a, const std::vector<COMPLEX> &b)
{
    if (a.size() != b.size())
        return std::numeric_limits<double>::infinity();
    double worst = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        raise(worst, a[i].re - b[i].re);
        raise(worst, a[i].im - b[i].im);
    }
    return worst;
}

double maxError(const std::vector<double> &a, const std::vector<double> &b)
{
    if (a.size() != b.size())
        return std::numeric_limits<double>::infinity();
    double worst = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        raise(worst, a[i] - b[i]);
    return worst;
}

double rms(const std::vector<COMPLEX> &signal)
{
    double sum = 0.0;
    for (const COMPLEX &sample : signal)
        sum += sample.re * sample.re + sample.im * sample.im;
    return signal.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(signal.size()));
}

COMPLEX component(const std::vector<COMPLEX> &signal, double frequency)
{
    COMPLEX sum{0.0, 0.0};
    double weight = 0.0;
    const int length = static_cast<int>(signal.size());
    for (int n = 0; n < length; ++n) {
        const COMPLEX x = signal[static_cast<std::size_t>(n)];
        const double w = blackmanHarris(n, length);
        const double c = w * std::cos(angle(frequency, n));
        const double s = -w * std::sin(angle(frequency, n));
        sum.re += x.re * c - x.im * s;
        sum.im += x.re * s + x.im * c;
        weight += w;
    }
    return {sum.re / weight, sum.im / weight};
}

double magnitude(COMPLEX value)
{
    return std::hypot(value.re, value.im);
}

double decibels(double ratio)
{
    return 20.0 * std::log10(ratio);
}
} // namespace test
