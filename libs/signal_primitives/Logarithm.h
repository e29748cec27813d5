// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <numbers>

namespace signal_primitives
{
/// Logarithm to base 10 of any float, for loops that the compiler makes vectors of; good to two
/// units of the last place.
///
/// log10(x) = e log10(2) + log10(m) with x = m 2^e and m in sqrt(1/2)..sqrt(2), so that e is 0
/// around 1 and nothing cancels there. With s = (m - 1) / (m + 1), |s| < 0.172,
///     ln(m) = 2 artanh(s) = 2 (s + s^3/3 + s^5/5 + s^7/7 + ...)
/// (Abramowitz and Stegun 4.1.27); the first omitted term is below 1e-7 of the sum.
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
} // namespace signal_primitives
