// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
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
    const std::vector<float> in(40, 0.0f); // vectors and a rest
    auto out = in;
    ippsLog10_32f_A11(in.data(), out.data(), 40);
    EXPECT_EQ(out, std::vector<float>(40, -kInfinity));

    const float special[] = {-0.0f, kInfinity, -1.0f, -kInfinity, std::nanf(""), -1e-42f, 100.0f};
    float result[7];
    ASSERT_EQ(ippsLog10_32f_A11(special, result, 7), ippStsNoErr);
    EXPECT_EQ(result[0], -kInfinity);
    EXPECT_EQ(result[1], kInfinity);
    for (const int n : {2, 3, 4, 5})
        EXPECT_TRUE(std::isnan(result[n])) << special[n];
    EXPECT_FLOAT_EQ(result[6], 2.0f);
    EXPECT_EQ(ippsLog10_32f_A11(special, result, 0), ippStsSizeErr);
    EXPECT_EQ(ippsLog10_32f_A11(nullptr, result, 7), ippStsNullPtrErr);
}

void expectSines(const std::vector<double> &in)
{
    constexpr double kRelative = 0x1p-26;
    auto out = in;
    ASSERT_EQ(ippsSin_64f_A26(out.data(), out.data(), int(out.size())), ippStsNoErr);
    for (std::size_t n = 0; n < in.size(); ++n) {
        const double expected = std::sin(in[n]);
        ASSERT_NEAR(out[n], expected, kRelative * std::abs(expected)) << in[n];
    }
}

TEST(ElementaryTest, SineHoldsToARelativeErrorFromTheZerosToHugeAngles)
{
    std::mt19937 generator(3);
    for (const double range : {1e-300, 1e-8, 1.0, 10.0, 1e3, 3e6, 1e9, 1e300}) {
        std::uniform_real_distribution<double> uniform(-range, range);
        std::vector<double> in(1501);
        std::generate(in.begin(), in.end(), [&] { return uniform(generator); });
        expectSines(in);
    }
    // Next to the zeros and extremes the angle must be reduced without loss.
    std::vector<double> edges = {0.0, std::numbers::pi / 2};
    for (const int multiple : {1, 2, 3, 1000, 65537, 1000003, 1048575})
        edges.push_back(multiple * std::numbers::pi);
    for (const double edge : std::vector<double>(edges))
        edges.insert(edges.end(), {-edge, std::nextafter(edge, -1.0), std::nextafter(edge, 1e9)});
    expectSines(edges);
}

TEST(ElementaryTest, SineOfNoFiniteAngleIsNotANumberAndSparesItsNeighbours)
{
    constexpr double kAbsolute = 1e-8;
    std::vector<double> in(1000, 0.5);
    in[300] = kInfinity64;
    in[301] = -kInfinity64;
    in[700] = std::nan("");
    std::vector<double> out(in.size());
    ASSERT_EQ(ippsSin_64f_A26(in.data(), out.data(), int(in.size())), ippStsNoErr);
    for (std::size_t n = 0; n < in.size(); ++n) {
        if (n == 300 || n == 301 || n == 700)
            EXPECT_TRUE(std::isnan(out[n]));
        else
            ASSERT_NEAR(out[n], std::sin(0.5), kAbsolute) << n;
    }
    EXPECT_EQ(ippsSin_64f_A26(in.data(), out.data(), 0), ippStsSizeErr);
    EXPECT_EQ(ippsSin_64f_A26(in.data(), nullptr, 1), ippStsNullPtrErr);
}
} // namespace
