// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Cuts.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using DspCore::FFT32;
using DspCore::FFT64;
using DspCore::FftType;

namespace
{
// Rounding of 4096 products of noise, in double and in single precision.
constexpr double kRoundOff = 1e-12;
constexpr double kSingleRoundOff = 2e-5;

/// The sum that defines the transform; sign -1 is forward, divided by N.
std::vector<COMPLEX> plainDft(const std::vector<COMPLEX> &in, int sign)
{
    const long long length = (long long)in.size();
    const double scale = sign < 0 ? 1.0 / double(length) : 1.0;
    std::vector<COMPLEX> out(in.size(), COMPLEX{0.0, 0.0});
    for (long long k = 0; k < length; ++k) {
        for (long long n = 0; n < length; ++n) {
            const double a =
                sign * 2.0 * std::numbers::pi * double(k * n % length) / double(length);
            const COMPLEX x = in[std::size_t(n)];
            out[std::size_t(k)].re += scale * (x.re * std::cos(a) - x.im * std::sin(a));
            out[std::size_t(k)].im += scale * (x.re * std::sin(a) + x.im * std::cos(a));
        }
    }
    return out;
}
} // namespace

class FftSizes : public testing::TestWithParam<int>
{ };

TEST_P(FftSizes, BothDirectionsEqualThePlainSum)
{
    const auto signal = test::noise(GetParam(), 1);
    FFT64 fft;
    FFT32 fft32;
    ASSERT_TRUE(fft.init(GetParam()));
    ASSERT_TRUE(fft32.init(GetParam()));
    for (const auto &[type, sign] : {std::pair{FftType::Forward, -1}, {FftType::Inverse, 1}}) {
        const auto expected = plainDft(signal, sign);
        auto transformed = signal;
        EXPECT_TRUE(fft.process(transformed.data(), GetParam(), type));
        EXPECT_LT(test::maxError(transformed, expected), kRoundOff * GetParam());
        auto single = test::toSingle(signal);
        EXPECT_TRUE(fft32.process(single.data(), GetParam(), type));
        EXPECT_LT(test::maxError(test::toDouble(single), expected), kSingleRoundOff);
    }
}

INSTANTIATE_TEST_SUITE_P(FFT64Test, FftSizes, testing::Values(2, 4, 64, 512, 1024));

TEST(FFT64Test, LengthsAreRoundedUpToAPowerOfTwo)
{
    for (const auto &[asked, made] : {std::pair{-5, 2}, {1, 2}, {2, 2}, {3, 4}, {1000, 1024},
             {1024, 1024}, {1025, 2048}, {16384, 16384}}) {
        FFT64 fft;
        ASSERT_TRUE(fft.init(asked)) << asked;
        // A transform of fewer points than it claims would leave the end of the array undivided.
        auto signal = test::tone(made, 0.0);
        ASSERT_TRUE(fft.process(signal.data(), made, FftType::Forward)) << asked;
        EXPECT_NEAR(signal[0].re, 1.0, kRoundOff) << asked;
        EXPECT_NEAR(signal[std::size_t(made - 1)].re, 0.0, kRoundOff) << asked;
    }
}

TEST(FFT64Test, ALengthThatCannotBeMadeLeavesItUnset)
{
    FFT64 fft;
    fft.init(64);
    test::LogCapture log;
    EXPECT_FALSE(fft.init(1 << 30)); // beyond the largest transform
    EXPECT_EQ(fft.length(), 0);
    EXPECT_TRUE(log.warned("FFT64::init"));
    EXPECT_TRUE(fft.init(64));
}
