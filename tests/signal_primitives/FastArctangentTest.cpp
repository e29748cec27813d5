// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/FastArctangent.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace
{
TEST(FastArctangentTest, StaysWithinFiveMilliradiansAllAround)
{
    constexpr double kWorst = 0.0053; // radians, of the polynomial
    constexpr double kRoundOff = 1e-6;
    for (int degree = -179; degree <= 179; ++degree) {
        const double angle = degree * std::numbers::pi / 180.0;
        const float got = Velmora::fastArctangent(
            static_cast<float>(0.3 * std::sin(angle)), static_cast<float>(0.3 * std::cos(angle)));
        EXPECT_NEAR(got, angle, kWorst) << degree;
    }
    EXPECT_EQ(Velmora::fastArctangent(0.0f, 0.0f), 0.0f);
    EXPECT_EQ(Velmora::fastArctangent(1.0f, 0.0f), 1.5707963f);
    EXPECT_EQ(Velmora::fastArctangent(-1.0f, 0.0f), -1.5707963f);
    EXPECT_EQ(Velmora::fastArctangent(1.0f, 1e-44f), 1.5707963f); // their quotient is infinite
    EXPECT_NEAR(Velmora::fastArctangent(-1.0f, 1e-44f), -1.5707963f, kRoundOff);
    EXPECT_EQ(Velmora::fastArctangent(0.0f, -1.0f), 3.1415927f);
}
} // namespace
