// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "signal_primitives/complex.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

// The phase of a tone that runs on from block to block, exact to the last place. What the tones of
// this folder share; not for their users.

namespace signal_primitives
{
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
inline Extended exactSum(double a, double b)
{
    const double value = a + b;
    const double part = value - a;
    return {value, (a - (value - part)) + (b - part)};
}

// frequency * count in turns, without the whole turns, within -0.5..0.5.
inline Extended turns(double frequency, int count)
{
    const double product = frequency * count;
    return {product - std::nearbyint(product), std::fma(frequency, count, -product)};
}

inline Velmora::complex<double> unit(double radians)
{
    return {std::cos(radians), std::sin(radians)};
}

inline Velmora::complex<double> unitAtTurns(Extended t)
{
    return unit(kTwoPi * (t.value + t.rest));
}

// Uniform in -0.5..0.5, a function of the argument alone: the finaliser of SplitMix64 (Steele, Lea
// and Flood, Fast Splittable Pseudorandom Number Generators, 2014).
inline double dither(Extended x)
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
inline double roundedWithoutBias(Extended x)
{
    const double lastPlace =
        std::nextafter(x.value, std::numeric_limits<double>::infinity()) - x.value;
    return x.value + (x.rest + dither(x) * lastPlace);
}

// phase + 2 pi * t, within 0 <= result < 2 pi.
inline double advanced(double phase, Extended t)
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
} // namespace signal_primitives
