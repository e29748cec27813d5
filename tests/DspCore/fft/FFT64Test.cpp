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
constexpr double kRoundOff = 1e-14;
constexpr double kSinglePrecision = 1e-6;
} // namespace

TEST(FFT64Test, LengthsAreRoundedUpAndForwardIsDivided)
{
    for (const auto &[asked, made] :
        {std::pair{-5, 2}, {1, 2}, {3, 4}, {1000, 1024}, {1024, 1024}, {16384, 16384}}) {
        FFT64 fft;
        FFT32 single;
        ASSERT_TRUE(fft.init(asked) && single.init(asked)) << asked;
        const int bin = made / 4;
        std::vector<COMPLEX> line(std::size_t(made), COMPLEX{0.0, 0.0});
        line[std::size_t(bin)] = {1.0, 0.0};
        const auto tone = test::tone(made, double(bin) / made);
        auto data = tone;
        auto data32 = test::toSingle(tone);
        ASSERT_TRUE(fft.process(data.data(), made, FftType::Forward)) << asked;
        ASSERT_TRUE(single.process(data32.data(), made, FftType::Forward)) << asked;
        EXPECT_LT(test::maxError(data, line), kRoundOff) << asked;
        EXPECT_LT(test::maxError(test::toDouble(data32), line), kSinglePrecision) << asked;
        ASSERT_TRUE(fft.process(data.data(), made, FftType::Inverse)) << asked;
        ASSERT_TRUE(single.process(data32.data(), made, FftType::Inverse)) << asked;
        EXPECT_LT(test::maxError(data, tone), kRoundOff) << asked;
        EXPECT_LT(test::maxError(test::toDouble(data32), tone), kSinglePrecision) << asked;
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
