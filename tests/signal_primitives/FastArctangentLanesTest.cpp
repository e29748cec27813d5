// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/FastArctangent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
TEST(FastArctangentLanesTest, AgreesWithTheFormThatBranches)
{
    constexpr float kTwoLastPlaces = 5e-7f; // of pi
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float parts[] = {0.0f, -0.0f, 1e-30f, -1e-30f, 1e-3f, -1e-3f, 0.7f, -0.7f, 0.71f, -0.71f,
        3.0f, -3.0f, 1e30f, -1e30f};
    for (const float y : parts) {
        for (const float x : parts)
            EXPECT_NEAR(
                Velmora::fastArctangentInLanes(y, x), Velmora::fastArctangent(y, x), kTwoLastPlaces)
                << y << ' ' << x;
        EXPECT_TRUE(std::isnan(Velmora::fastArctangentInLanes(y, std::nanf(""))));
        EXPECT_TRUE(std::isnan(Velmora::fastArctangentInLanes(kInfinity, kInfinity)));
    }
}
} // namespace
