// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <limits>

namespace Velmora
{
namespace fast_arctangent
{
constexpr float kPi = 3.1415927f;
constexpr float kHalfPi = 1.5707963f;
constexpr float kCurvature = 0.28f;
} // namespace fast_arctangent

/// Angle of the point (x, y) in radians, -pi..pi, in single precision throughout.
///
/// Rational approximation atan z = z / (1 + 0.28 z^2) for |z| < 1 and its complement to a right
/// angle outside; the error stays below 0.005 rad (S. Rajan et al., "Efficient approximations for
/// the arctangent function", IEEE Signal Processing Magazine, May 2006). Phase loops close over the
/// error, so they need its sign and slope rather than its last digits. The origin gives 0.
inline float fastArctangent(float y, float x)
{
    using namespace fast_arctangent;
    if (x == 0.0f)
        return y > 0.0f ? kHalfPi : (y == 0.0f ? 0.0f : -kHalfPi);

    const float z = y / x;
    if (std::abs(z) < 1.0f) {
        const float angle = z / (1.0f + kCurvature * z * z);
        if (x < 0.0f)
            return y < 0.0f ? angle - kPi : angle + kPi;
        return angle;
    }
    // A quotient beyond single precision is infinite: the point stands on the y axis.
    const float angle = kHalfPi - (std::isinf(z) ? 0.0f : z / (z * z + kCurvature));
    return y < 0.0f ? angle - kPi : angle;
}

/// The same to two units in the last place, without branches: a loop over points becomes vectors.
/// An x of 0 counts as the smallest normal number.
[[gnu::always_inline]] inline float fastArctangentInLanes(float y, float x)
{
    using namespace fast_arctangent;
    constexpr float kSmallest = std::numeric_limits<float>::min();
    constexpr float kLargest = std::numeric_limits<float>::max();

    // Choices are between constants and arguments: the compiler blends those and nothing else.
    const float z = y / (x == 0.0f ? kSmallest : x);
    const float square = z * z;
    const bool nearX = std::abs(z) < 1.0f;
    // A quotient beyond single precision is infinite: the point stands on the y axis.
    const float bounded = std::abs(z) > kLargest ? 0.0f : z;
    const float quotient =
        bounded / ((nearX ? kCurvature : 1.0f) * square + (nearX ? 1.0f : kCurvature));
    const float axis = nearX ? (x < 0.0f ? kPi : 0.0f) : kHalfPi; // next to the point, or opposite
    return std::copysign(axis, y + 0.0f) + (nearX ? 1.0f : -1.0f) * quotient;
}
} // namespace Velmora
