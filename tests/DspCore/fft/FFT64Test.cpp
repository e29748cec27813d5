// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Cuts.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::FFT32;
using DspCore::FFT64;
using DspCore::FftType;

namespace
{
// Rounding of a thousand products of noise, in double and in single precision.
constexpr double kRoundOff = 1e-9;
constexpr double kSinglePrecision = 2e-5;
} // namespace

TEST(FFT64Test, BothDirectionsEqualThePlainSum)
{
    for (const int size : {2, 4, 64, 1024}) {
        const auto signal = test::noise(size, 1);
        FFT64 fft;
        FFT32 fft32;
        ASSERT_TRUE(fft.init(size));
        ASSERT_TRUE(fft32.init(size));
        for (const auto &[type, turns, scale] :
            {std::tuple{FftType::Forward, 1.0, 1.0 / size}, {FftType::Inverse, -1.0, 1.0}}) {
            std::vector<COMPLEX> expected;
            for (int bin = 0; bin < size; ++bin) {
                const COMPLEX sum = test::fourierSum(signal, turns * bin / size);
                expected.push_back({scale * sum.re, scale * sum.im});
            }
            auto transformed = signal;
            EXPECT_TRUE(fft.process(transformed.data(), size, type));
            EXPECT_LT(test::maxError(transformed, expected), kRoundOff) << size;
            auto single = test::toSingle(signal);
            EXPECT_TRUE(fft32.process(single.data(), size, type));
            EXPECT_LT(test::maxError(test::toDouble(single), expected), kSinglePrecision) << size;
        }
    }
}

TEST(FFT64Test, LengthsAreRoundedUpToAPowerOfTwo)
{
    for (const auto &[asked, made] :
        {std::pair{-5, 2}, {1, 2}, {3, 4}, {1000, 1024}, {1024, 1024}, {16384, 16384}}) {
        FFT64 fft;
        ASSERT_TRUE(fft.init(asked)) << asked;
        // A transform of fewer points than it claims would leave the end of the array undivided.
        auto signal = test::tone(made, 0.0);
        ASSERT_TRUE(fft.process(signal.data(), made, FftType::Forward)) << asked;
        EXPECT_NEAR(signal.front().re, 1.0, kRoundOff) << asked;
        EXPECT_NEAR(signal.back().re, 0.0, kRoundOff) << asked;
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
