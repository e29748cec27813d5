// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>
#include <malloc.h>

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

// A filter's length goes to and fro with the mode for days.
TEST(FFT64Test, ALengthThatComesBackTakesNoMoreMemory)
{
    constexpr std::size_t kGrowth = 64 * 1024; // bytes, less than one set-up of these lengths takes
    DspCore::FFT64 fft;
    const auto visitAll = [&fft] {
        for (const int length : {8192, 16384, 4096}) {
            ASSERT_TRUE(fft.init(length));
            auto data = test::noise(length, /*seed*/ 5);
            ASSERT_TRUE(fft.process(data.data(), length, DspCore::FftType::Forward));
        }
    };
    visitAll();
    const std::size_t before = mallinfo2().uordblks;
    for (int round = 0; round < 20; ++round)
        visitAll();
    EXPECT_LT(mallinfo2().uordblks, before + kGrowth);
}

TEST(FFT64Test, IntoAnotherArrayIsTheSameUndivided)
{
    constexpr double kSinglePrecision = 1e-6;
    for (const int length : {64, 8192}) {         // with a plan of its own, and by a copy
        for (const std::size_t offset : {0, 1}) { // on and off the alignment of single precision
            DspCore::FFT32 fft;
            ASSERT_TRUE(fft.init(length));
            const auto in = test::toSingle(test::noise(length + 1, /*seed*/ 3));
            std::vector<COMPLEX32> there(in.size()), back(in.size());
            ASSERT_TRUE(fft.direct(&in[offset], &there[offset]));
            ASSERT_TRUE(fft.invers(&there[offset], &back[offset]));
            auto divided = in;
            ASSERT_TRUE(fft.direct(&divided[offset]));
            for (std::size_t n = offset; n < offset + std::size_t(length); ++n) {
                ASSERT_NEAR(there[n].re / float(length), divided[n].re, kSinglePrecision) << n;
                ASSERT_NEAR(back[n].im / float(length), in[n].im, kSinglePrecision) << n;
            }
        }
    }
}
