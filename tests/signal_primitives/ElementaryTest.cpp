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
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr double kInfinity64 = std::numeric_limits<double>::infinity();

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
}

TEST(ElementaryTest, LogarithmOfWhatHasNone)
{
    for (const int length : {40, 3}) { // vectors and a rest
        for (const float x : {0.0f, -0.0f, kInfinity, -1.0f, -kInfinity, std::nanf(""), -1e-42f}) {
            std::vector<float> out(std::size_t(length), x);
            ASSERT_EQ(ippsLog10_32f_A11(out.data(), out.data(), length), ippStsNoErr);
            for (const float got : out) {
                if (x == 0.0f || x > 0.0f)
                    EXPECT_EQ(got, x > 0.0f ? kInfinity : -kInfinity) << x;
                else
                    EXPECT_TRUE(std::isnan(got)) << x;
            }
        }
    }
    float result = 7.0f;
    EXPECT_EQ(ippsLog10_32f_A11(&result, &result, 0), ippStsSizeErr);
    EXPECT_EQ(ippsLog10_32f_A11(nullptr, &result, 7), ippStsNullPtrErr);
    EXPECT_EQ(result, 7.0f);
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
    in.insert(in.end(), {0.5, kInfinity64, -kInfinity64, std::nan(""), 0.5}); // neighbours stay
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
    EXPECT_EQ(ippsSin_64f_A26(in.data(), out.data(), 0), ippStsSizeErr);
    EXPECT_EQ(ippsSin_64f_A26(in.data(), nullptr, 1), ippStsNullPtrErr);
}
} // namespace
