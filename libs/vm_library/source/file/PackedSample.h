// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// The 24-bit samples of a recording, 6 bytes each: I then Q, each the upper three bytes of a
/// 32-bit integer, least significant first.
///
/// A pair is both integers in one word, I in the lower half.
namespace vm::file
{
constexpr std::size_t kPackedSampleSize = 6; // bytes

/// Both values without their fractions. What does not fit into 32 bits, infinities and NaN among
/// it, becomes the most negative integer, as the x86 conversion has it; C++ leaves it undefined.
inline std::uint64_t truncatedPair(double i, double q)
{
#if defined(__SSE2__)
    return std::uint64_t(_mm_cvtsi128_si64(_mm_cvttpd_epi32(_mm_set_pd(q, i))));
#else
    const auto truncated = [](double value) {
        const bool fits = value > -2147483649.0 && value < 2147483648.0;
        return std::uint32_t(fits ? std::int32_t(value) : INT32_MIN);
    };
    return truncated(i) | std::uint64_t(truncated(q)) << 32;
#endif
}

/// Drops the low byte of either integer.
inline void storePair(unsigned char *bytes, std::uint64_t pair)
{
    const std::uint64_t packed = (pair >> 8 & 0xFFFFFF) | pair >> 40 << 24;
    std::memcpy(bytes, &packed, kPackedSampleSize);
}

/// The low bytes come back as 0.
inline std::uint64_t loadPair(const unsigned char *bytes)
{
    std::uint64_t packed = 0;
    std::memcpy(&packed, bytes, kPackedSampleSize);
    return (packed & 0xFFFFFF) << 8 | packed >> 24 << 40;
}
} // namespace vm::file
