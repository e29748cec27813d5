// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/kernel.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

using signal_primitives::check;

namespace
{
// log10(x) = e log10(2) + log10(m) with x = m 2^e and m in sqrt(1/2)..sqrt(2), so that e is 0
// around 1 and nothing cancels there. With s = (m - 1) / (m + 1), |s| < 0.172,
//     ln(m) = 2 artanh(s) = 2 (s + s^3/3 + s^5/5 + s^7/7 + ...)
// (Abramowitz and Stegun 4.1.27); the first omitted term is below 1e-7 of the sum.
[[gnu::always_inline]] inline float log10Of(float x)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr std::uint32_t kSqrtHalf = 0x3f3504f3; // bits of sqrt(1/2)
    constexpr std::uint32_t kMantissa = 0x007fffff;
    constexpr float kLog10Of2 = 0.301029996f;
    constexpr float kScale = 2.0f / std::numbers::ln10_v<float>;

    // Denormals become normal, by 2^25 up and 25 off the exponent.
    const bool tiny = x < std::numeric_limits<float>::min();
    const float normal = tiny ? x * 0x1p25f : x;
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(normal) - kSqrtHalf;
    const std::int32_t octave = static_cast<std::int32_t>(bits) >> 23;
    const auto exponent = static_cast<float>(octave - (tiny ? 25 : 0));
    const auto m = std::bit_cast<float>((bits & kMantissa) + kSqrtHalf);

    const float s = (m - 1.0f) / (m + 1.0f);
    const float t = s * s;
    const float series = 1.0f + t * (1.0f / 3.0f + t * (1.0f / 5.0f + t * (1.0f / 7.0f)));
    float y = exponent * kLog10Of2 + kScale * s * series;

    y = x < kInfinity ? y : x; // infinity and not-a-number are their own logarithms
    y = x == 0.0f ? -kInfinity : y;
    return x < 0.0f ? std::numeric_limits<float>::quiet_NaN() : y;
}

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
