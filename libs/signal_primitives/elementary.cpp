// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/Logarithm.h"
#include "signal_primitives/kernel.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

using signal_primitives::check;
using signal_primitives::log10Of;

namespace
{
// Up to here the multiple of pi below has at most 21 bits and its product with the first two parts
// of pi is exact.
constexpr double kSinLimit = 0x1p20 * std::numbers::pi;

// sin(x) = (-1)^q sin(r) with q the integer next to x / pi and r = x - q pi in -pi/2..pi/2. Pi is
// taken in three parts, the first two of 32 bits (Cody and Waite, Software Manual for the
// Elementary Functions, 1980), so that r is good to rounding also next to the zeros. The series of
// sin(r) to r^15 leaves 6e-12.
[[gnu::always_inline]] inline double sinOf(double x)
{
    constexpr double kPi1 = 0x1.921fb544p+1;
    constexpr double kPi2 = 0x1.0b4611a6p-33;
    constexpr double kPi3 = 0x1.3198a2e037073p-68;
    // Adding it leaves the integer next to the sum in the low bits of the mantissa.
    constexpr double kRounder = 0x1.8p52;

    const double rounded = x * std::numbers::inv_pi + kRounder;
    const double q = rounded - kRounder;
    const double r = ((x - q * kPi1) - q * kPi2) - q * kPi3;
    const double t = r * r;
    double series = -1.0 / 1307674368000.0;   // 15!
    series = series * t + 1.0 / 6227020800.0; // 13!
    series = series * t - 1.0 / 39916800.0;
    series = series * t + 1.0 / 362880.0;
    series = series * t - 1.0 / 5040.0;
    series = series * t + 1.0 / 120.0;
    series = series * t - 1.0 / 6.0;
    const double sine = r + r * t * series;
    const std::uint64_t oddMultiple = std::bit_cast<std::uint64_t>(rounded) << 63;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(sine) ^ oddMultiple);
}

[[gnu::always_inline]] inline bool allBelow(const double *src, int len, double limit)
{
    int above = 0;
    for (int n = 0; n < len; ++n)
        above += !(std::abs(src[n]) < limit);
    return above == 0;
}
} // namespace

PROCESSOR_CLONES
IppStatus ippsLog10_32f_A11(const Ipp32f *pSrc, Ipp32f *pDst, Ipp32s len)
{
    if (const IppStatus bad = check(len, pSrc, pDst))
        return bad;
#pragma GCC ivdep
    for (int n = 0; n < len; ++n)
        pDst[n] = log10Of(pSrc[n]);
    return ippStsNoErr;
}

PROCESSOR_CLONES
IppStatus ippsSin_64f_A26(const Ipp64f *pSrc, Ipp64f *pDst, Ipp32s len)
{
    if (const IppStatus bad = check(len, pSrc, pDst))
        return bad;
    // Huge angles are rare; a piece that holds one, an infinity or a not-a-number is done one by
    // one.
    constexpr int kPiece = 256;
    for (int start = 0; start < len; start += kPiece) {
        const int count = len - start < kPiece ? len - start : kPiece;
        const double *src = pSrc + start;
        double *dst = pDst + start;
        if (allBelow(src, count, kSinLimit)) {
#pragma GCC ivdep
            for (int n = 0; n < count; ++n)
                dst[n] = sinOf(src[n]);
        } else {
            for (int n = 0; n < count; ++n)
                dst[n] = std::sin(src[n]);
        }
    }
    return ippStsNoErr;
}
