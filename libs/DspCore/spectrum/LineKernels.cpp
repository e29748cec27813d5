// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/LineKernels.h"

#include "DspCore/spectrum/AveragerCommon.h"
#include "processor/Clones.h"

#include <bit>
#include <cstdint>
#include <limits>

namespace DspCore
{
namespace
{
[[gnu::always_inline]] inline COMPLEX32 weighed(COMPLEX32 x, REAL32 weight)
{
    return {x.re * weight, x.im * weight};
}

[[gnu::always_inline]] inline COMPLEX32 sum(COMPLEX32 x, COMPLEX32 y)
{
    return {x.re + y.re, x.im + y.im};
}

[[gnu::always_inline]] inline COMPLEX32 difference(COMPLEX32 x, COMPLEX32 y)
{
    return {x.re - y.re, x.im - y.im};
}

[[gnu::always_inline]] inline COMPLEX32 product(COMPLEX32 x, COMPLEX32 y)
{
    return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
}

[[gnu::always_inline]] inline REAL32 powerOf(COMPLEX32 x)
{
    return x.re * x.re + x.im * x.im;
}

[[gnu::always_inline]] inline void powers(
    const COMPLEX32 *bins, REAL32 scale, REAL32 *line, int quarter, int count)
{
#pragma GCC ivdep
    for (int k = 0; k < count; ++k)
        for (int r = 0; r < 4; ++r)
            line[4 * k + r] = scale * powerOf(bins[r * quarter + k]);
}

/// 10 log10(x) + offset of a positive number that is not denormal; infinity and not-a-number stay.
/// Good to 6e-6 dB, which is the rounding of -100 dB in single precision.
///
/// x = m 2^e with m in sqrt(1/2)..sqrt(2); 10 log10(m) is the polynomial of m - 1 whose largest
/// error is least there (found by the exchange of E. Remez, 1934). Against the series of
/// signal_primitives::log10Of() that saves the division and what decibels cannot show. The exponent
/// stays in its place in the word, 2^23 times too large.
[[gnu::always_inline]] inline REAL32 decibelsOf(REAL32 x, REAL32 offset)
{
    constexpr REAL32 kInfinity = std::numeric_limits<REAL32>::infinity();
    constexpr std::uint32_t kSqrtHalf = 0x3f3504f3; // bits of sqrt(1/2)
    constexpr std::uint32_t kExponent = 0xff800000;
    constexpr REAL32 kDbPerOctave = 3.01029996f;

    const auto bits = std::bit_cast<std::uint32_t>(x);
    const std::uint32_t exponent = (bits - kSqrtHalf) & kExponent;
    const REAL32 f = std::bit_cast<REAL32>(bits - exponent) - 1.0f;
    const auto octaves = static_cast<REAL32>(static_cast<std::int32_t>(exponent));

    REAL32 db = -6.1870306132e-1f;
    db = db * f + 9.7324269962e-1f;
    db = db * f - 1.1084563880f;
    db = db * f + 1.4425528019f;
    db = db * f - 2.1706099521f;
    db = db * f + 4.3430137967f;
    db = db * f + (octaves * (kDbPerOctave * 0x1p-23f) + (offset - 4.3711489705e-6f));
    return x < kInfinity ? db : x;
}

[[gnu::always_inline]] inline REAL32 cubic(const REAL32 *y, const CubicPlaces &places, int n)
{
    return y[2] + places.weight0[n] * (y[0] - y[2]) + places.weight1[n] * (y[1] - y[2])
        + places.weight3[n] * (y[3] - y[2]);
}

[[gnu::always_inline]] inline void cubicsFrom(
    int first, const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    for (int n = first; n < count; ++n)
        out[n] = cubic(in + places.index[n], places, n);
}

#if PROCESSOR_DISPATCH
/// A register of outputs of a line that grows lies between at most as many inputs and three more:
/// four loads, sorted to their outputs inside the register.
template <int kBytes>
[[gnu::always_inline]] inline void cubicsInRegisters(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    typedef REAL32 Reals __attribute__((vector_size(kBytes), aligned(alignof(REAL32)), may_alias));
    typedef int Places __attribute__((vector_size(kBytes), aligned(alignof(int)), may_alias));
    constexpr int kLanes = kBytes / int(sizeof(REAL32));
    const auto load = [](const REAL32 *from) __attribute__((always_inline))->const Reals &
    {
        return *reinterpret_cast<const Reals *>(from);
    };
    int n = 0;
    for (; n + kLanes <= count; n += kLanes) {
        if (places.index[n + kLanes - 1] - places.index[n] >= kLanes) {
            cubicsFrom(n, in, places, out, n + kLanes);
            continue;
        }
        const REAL32 *const y = in + places.index[n];
        const Places lane = *reinterpret_cast<const Places *>(places.index + n) - places.index[n];
        const Reals y2 = __builtin_shuffle(load(y + 2), lane);
        *reinterpret_cast<Reals *>(out + n) = y2
            + load(places.weight0 + n) * (__builtin_shuffle(load(y), lane) - y2)
            + load(places.weight1 + n) * (__builtin_shuffle(load(y + 1), lane) - y2)
            + load(places.weight3 + n) * (__builtin_shuffle(load(y + 3), lane) - y2);
    }
    cubicsFrom(n, in, places, out, count);
}

__attribute__((target("default"))) void versionedCubics(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsFrom(0, in, places, out, count);
}

__attribute__((target("arch=x86-64-v3"))) void versionedCubics(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsInRegisters<32>(in, places, out, count);
}

__attribute__((target("arch=x86-64-v4"))) void versionedCubics(
    const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsInRegisters<64>(in, places, out, count);
}
#else
void versionedCubics(const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    cubicsFrom(0, in, places, out, count);
}
#endif
} // namespace

PROCESSOR_CLONES
void firstStep(
    const FirstStep &step, const COMPLEX32 *const in[4], COMPLEX32 *out, int first, int count)
{
    const int quarter = step.quarter;
    const COMPLEX32 *const in0 = in[0], *const in1 = in[1], *const in2 = in[2], *const in3 = in[3];
    const REAL32 *const window = step.window + first;
    const REAL32 *const turnRe = step.turnRe + first;
    const REAL32 *const turnIm = step.turnIm + first;
    COMPLEX32 *const to = out + first;
#pragma GCC ivdep
    for (int n = 0; n < count; ++n) {
        const COMPLEX32 a = weighed(in0[n], window[n]);
        const COMPLEX32 b = weighed(in1[n], window[n + quarter]);
        const COMPLEX32 c = weighed(in2[n], window[n + 2 * quarter]);
        const COMPLEX32 d = weighed(in3[n], window[n + 3 * quarter]);
        const COMPLEX32 ac = difference(a, c), bd = difference(b, d);
        const COMPLEX32 turn{turnRe[n], turnIm[n]}; // its powers cost less than their tables
        const COMPLEX32 turn2 = product(turn, turn);
        to[n] = sum(sum(a, c), sum(b, d));
        to[n + quarter] = product({ac.re + bd.im, ac.im - bd.re}, turn);
        to[n + 2 * quarter] = product(difference(sum(a, c), sum(b, d)), turn2);
        to[n + 3 * quarter] = product({ac.re - bd.im, ac.im + bd.re}, product(turn, turn2));
    }
}

PROCESSOR_CLONES
void powerLine(const COMPLEX32 *bins, REAL32 scale, REAL32 *line, int quarter)
{
    const int half = quarter / 2;
    powers(bins + half, scale, line, quarter, half);
    powers(bins, scale, line + 2 * quarter, quarter, half);
}

PROCESSOR_CLONES
void powerToDb(const REAL32 *power, REAL32 *db, int size, REAL32 offset, REAL32 scale)
{
#pragma GCC ivdep
    for (int n = 0; n < size; ++n)
        db[n] = decibelsOf(power[n] * scale + kPowerFloor, offset);
}

PROCESSOR_CLONES
void addLine(
    const REAL32 *line, REAL32 *row, REAL32 *newer, const REAL32 *older, REAL32 *sum, int size)
{
#pragma GCC ivdep
    for (int n = 0; n < size; ++n) {
        row[n] = line[n];
        newer[n] += line[n];
        sum[n] = newer[n] + older[n];
    }
}

void cubics(const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count)
{
    versionedCubics(in, places, out, count);
}
} // namespace DspCore
