// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/fft/FFT64.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

TEST(FFT64Test, LengthsAreRoundedUpAndForwardIsDivided)
{
    constexpr double kRoundOff = 1e-14;
    for (const auto &[asked, made] : {std::pair{-5, 2}, {1, 2}, {1000, 1024}, {16384, 16384}}) {
        DspCore::FFT64 fft;
        ASSERT_TRUE(fft.init(asked)) << asked;
        const auto tone = test::tone(made, 0.5);
        auto data = tone;
        ASSERT_TRUE(fft.process(data.data(), made, DspCore::FftType::Forward)) << asked;
        EXPECT_NEAR(data[std::size_t(made / 2)].re, 1.0, kRoundOff);
        ASSERT_TRUE(fft.process(data.data(), made, DspCore::FftType::Inverse)) << asked;
        EXPECT_LT(test::maxError(data, tone), kRoundOff) << asked;
    }
    EXPECT_FALSE(DspCore::FFT64().init(1 << 30)); // beyond the largest transform
}
