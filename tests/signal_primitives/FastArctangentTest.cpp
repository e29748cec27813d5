// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/FastArctangent.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace
{
TEST(FastArctangentTest, BothFormsStayWithinFiveMilliradiansAllAround)
{
    constexpr double kWorst = 0.0053;       // radians, of the polynomial
    constexpr double kTwoLastPlaces = 5e-7; // of pi
    constexpr float kHalfPi = 1.5707963f;
    const float parts[] = {0.0f, -0.0f, 1e-30f, -1e-30f, 1e-3f, -1e-3f, 0.7f, -0.7f, 0.71f, -0.71f,
        3.0f, -3.0f, 1e30f, -1e30f};
    for (const float y : parts) {
        for (const float x : parts) {
            const float got = Velmora::fastArctangent(y, x);
            // Zeros have no sign here: 0 stands for the negative axis too.
            const double angle = y == 0.0f && x == 0.0f ? 0.0 : std::atan2(y, x);
            EXPECT_NEAR(std::remainder(got - angle, 2.0 * std::numbers::pi), 0.0, kWorst)
                << y << ' ' << x;
            EXPECT_NEAR(Velmora::fastArctangentInLanes(y, x), got, kTwoLastPlaces);
        }
        EXPECT_TRUE(std::isnan(Velmora::fastArctangentInLanes(y, std::nanf(""))));
        EXPECT_TRUE(std::isnan(Velmora::fastArctangentInLanes(INFINITY, INFINITY)));
    }
    EXPECT_EQ(Velmora::fastArctangent(0.0f, 0.0f), 0.0f);
    EXPECT_EQ(Velmora::fastArctangent(-1.0f, 0.0f), -kHalfPi);
    EXPECT_EQ(Velmora::fastArctangent(1.0f, 1e-44f), kHalfPi); // their quotient is infinite
    EXPECT_EQ(Velmora::fastArctangent(0.0f, -1.0f), 3.1415927f);
}
} // namespace
