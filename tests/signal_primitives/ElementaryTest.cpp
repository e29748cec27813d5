// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace
{
TEST(ElementaryTest, LogarithmHoldsOverAllPositiveNumbers)
{
    constexpr double kRelative = 0x1p-20; // 11 bits are promised, the series leaves some 23
    std::vector<float> in;
    for (std::uint32_t bits = 1; bits < 0x7f800000u; bits += 4099) // a prime, through all exponents
        in.push_back(std::bit_cast<float>(bits));
    for (const float x : {1.0f, std::nextafter(1.0f, 0.0f), std::nextafter(1.0f, 2.0f), 10.0f,
             std::numeric_limits<float>::denorm_min(), std::numeric_limits<float>::min(),
             std::numeric_limits<float>::max()})
        in.push_back(x);
    auto out = in;
    ASSERT_EQ(ippsLog10_32f_A11(out.data(), out.data(), int(out.size())), ippStsNoErr);
    for (std::size_t n = 0; n < in.size(); ++n) {
        const double expected = std::log10(double(in[n]));
        ASSERT_NEAR(out[n], expected, kRelative * std::abs(expected)) << in[n];
    }
    for (const float x : {0.0f, -0.0f, INFINITY, -1.0f, -INFINITY, std::nanf("")}) {
        float out = x;
        ippsLog10_32f_A11(&out, &out, 1);
        const double expected = std::log10(double(x));
        EXPECT_TRUE(std::isnan(expected) ? std::isnan(out) : out == expected) << x;
    }
}

TEST(ElementaryTest, SineHoldsToARelativeErrorFromTheZerosToHugeAngles)
{
    constexpr double kRelative = 0x1p-26;
    std::mt19937 generator(3);
    std::vector<double> in = {0.0, std::numbers::pi / 2};
    // Next to the zeros and extremes the angle must be reduced without loss.
    for (const int multiple : {1, 2, 3, 1000, 65537, 1000003, 1048575})
        in.push_back(multiple * std::numbers::pi);
    for (const double edge : std::vector<double>(in))
        in.insert(in.end(), {-edge, std::nextafter(edge, -1.0), std::nextafter(edge, 1e9)});
    for (const double range : {1e-300, 1e-8, 1.0, 10.0, 1e3, 3e6, 1e9, 1e300}) {
        std::uniform_real_distribution<double> uniform(-range, range);
        std::generate_n(std::back_inserter(in), 1501, [&] { return uniform(generator); });
    }
    in.insert(in.end(), {0.5, INFINITY, -INFINITY, std::nan(""), 0.5}); // neighbours stay
    auto out = in;
    ASSERT_EQ(ippsSin_64f_A26(out.data(), out.data(), int(out.size())), ippStsNoErr);
    for (std::size_t n = 0; n < in.size(); ++n) {
        const double expected = std::sin(in[n]);
        if (std::isfinite(in[n])) {
            ASSERT_NEAR(out[n], expected, kRelative * std::abs(expected)) << in[n];
        } else {
            ASSERT_TRUE(std::isnan(out[n])) << in[n];
        }
    }
}
} // namespace
