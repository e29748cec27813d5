// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

using signal_primitives::check;
using Velmora::complex;

namespace
{
// The tone is a product of two short tables:
//
//     x[anchor + kLanes k + l] = z[k] w[l],   z[k] = z[0] s^k,   w[l] = exp(j 2 pi f l)
//
// with the step s = exp(j 2 pi f kLanes). z[0] comes from the exact phase of every
// kAnchorSpacing-th sample, so the rounding of at most 64 steps adds up, some 1e-14.
constexpr int kLanes = 16;
constexpr int kAnchorSpacing = 64 * kLanes;

// 2 pi is the sum of the two.
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kTwoPiRest = 0x1.1a62633145c07p-52;

/// An unevaluated sum, rest within half a unit in the last place of value.
struct Extended
{
    double value;
    double rest;
};

// Exact sum (Knuth, The Art of Computer Programming 2, 4.2.2, theorem B).
Extended exactSum(double a, double b)
{
    const double value = a + b;
    const double part = value - a;
    return {value, (a - (value - part)) + (b - part)};
}

// frequency * count in turns, without the whole turns, within -0.5..0.5.
Extended turns(double frequency, int count)
{
    const double product = frequency * count;
    return {product - std::nearbyint(product), std::fma(frequency, count, -product)};
}

complex<double> unit(double radians)
{
    return {std::cos(radians), std::sin(radians)};
}

complex<double> unitAtTurns(Extended t)
{
    return unit(kTwoPi * (t.value + t.rest));
}

[[gnu::always_inline]] inline complex<double> product(complex<double> a, complex<double> b)
{
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

// Uniform in -0.5..0.5, a function of the argument alone: the finaliser of SplitMix64 (Steele, Lea
// and Flood, Fast Splittable Pseudorandom Number Generators, 2014).
double dither(Extended x)
{
    std::uint64_t h = std::bit_cast<std::uint64_t>(x.value) * 0x9e3779b97f4a7c15u;
    h += std::bit_cast<std::uint64_t>(x.rest);
    h = (h ^ (h >> 30)) * 0xbf58476d1ce4e5b9u;
    h = (h ^ (h >> 27)) * 0x94d049bb133111ebu;
    return static_cast<double>(static_cast<std::int64_t>(h ^ (h >> 31))) * 0x1p-64;
}

// The caller keeps one double between blocks, and equal blocks advance it by an equal angle.
// Rounding to nearest would then lose nearly the same fraction of the last place each time, and
// 20000 blocks drift by 1e-11. Rounding up with a probability equal to the fraction leaves a random
// walk of some 1e-13.
double roundedWithoutBias(Extended x)
{
    const double lastPlace =
        std::nextafter(x.value, std::numeric_limits<double>::infinity()) - x.value;
    return x.value + (x.rest + dither(x) * lastPlace);
}

// phase + 2 pi * t, within 0 <= result < 2 pi.
double advanced(double phase, Extended t)
{
    const double angle = kTwoPi * t.value;
    const double angleRest =
        std::fma(kTwoPi, t.value, -angle) + (kTwoPiRest * t.value + kTwoPi * t.rest);
    Extended sum = exactSum(phase, angle);
    sum.rest += angleRest;

    double turn = 0.0;
    if (sum.value + sum.rest < 0.0)
        turn = 1.0;
    else if ((sum.value - kTwoPi) + (sum.rest - kTwoPiRest) >= 0.0)
        turn = -1.0;
    Extended wrapped = exactSum(sum.value, turn * kTwoPi);
    wrapped = exactSum(wrapped.value, wrapped.rest + (sum.rest + turn * kTwoPiRest));

    const double result = roundedWithoutBias(wrapped);
    return result >= 0.0 && result < kTwoPi ? result : 0.0;
}

/// The lanes w[l] and j w[l], so that z w = re(z) w + im(z) (j w) is a plain sum over the
/// interleaved real and imaginary parts.
struct Lanes
{
    alignas(64) complex<double> w[kLanes];
    alignas(64) complex<double> jw[kLanes];
};

// By doubling the filled part, four products deep.
void fill(Lanes &lanes, double frequency)
{
    complex<double>(&w)[kLanes] = lanes.w;
    w[0] = {1.0, 0.0};
    complex<double> next = unitAtTurns(turns(frequency, 1));
    for (int filled = 1; filled < kLanes; filled *= 2) {
        for (int l = 0; l < filled; ++l)
            w[filled + l] = product(w[l], next);
        next = product(next, next);
    }
    for (int l = 0; l < kLanes; ++l)
        lanes.jw[l] = {-w[l].im, w[l].re};
}

SIGNAL_PRIMITIVES_CLONES
void run(complex<double> *dst, int len, complex<double> z, complex<double> step, const Lanes &lanes)
{
    const double *w = &lanes.w[0].re;
    const double *jw = &lanes.jw[0].re;
    double *out = &dst->re;
    const auto write = [&](int count) __attribute__((always_inline))
    {
#pragma GCC ivdep
        for (int i = 0; i < count; ++i)
            out[i] = z.re * w[i] + z.im * jw[i];
    };
    for (; len >= kLanes; len -= kLanes, out += 2 * kLanes) {
        write(2 * kLanes);
        z = product(z, step);
    }
    write(2 * len);
}
} // namespace

IppStatus ippsTone_Direct_64fc(
    Ipp64fc *pDst, int len, Ipp64f magn, Ipp64f rFreq, Ipp64f *pPhase, IppHintAlgorithm)
{
    if (const IppStatus bad = check(len, pDst, pPhase))
        return bad;
    if (!(magn > 0.0))
        return ippStsToneMagnErr;
    if (!(rFreq >= 0.0 && rFreq <= 1.0))
        return ippStsToneFreqErr;
    if (!(*pPhase >= 0.0 && *pPhase < kTwoPi))
        return ippStsTonePhaseErr;

    Lanes lanes;
    fill(lanes, rFreq);
    const complex<double> step = unitAtTurns(turns(rFreq, kLanes));
    for (int n = 0; n < len; n += kAnchorSpacing) {
        const Extended t = turns(rFreq, n);
        const complex<double> z = unit(*pPhase + kTwoPi * (t.value + t.rest));
        run(pDst + n, std::min(len - n, kAnchorSpacing), {magn * z.re, magn * z.im}, step, lanes);
    }
    *pPhase = advanced(*pPhase, turns(rFreq, len));
    return ippStsNoErr;
}
