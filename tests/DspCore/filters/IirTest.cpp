// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Iir.h"
#include "DspCore/filters/Cuts.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using DspCore::Iir;
using Type = Iir::Type;

namespace
{
constexpr double kRoundOff = 1e-8; // ten poles, tones of 4096 samples

/// 1 / sqrt(1 + w^2n), w the ratio of the prewarped frequencies (Butterworth 1930).
double butterworth(double fc, int order, Type type, double f)
{
    const double w = std::tan(std::numbers::pi * f) / std::tan(std::numbers::pi * fc);
    return 1.0 / std::sqrt(1.0 + std::pow(type == Type::LowPass ? w : 1.0 / w, 2.0 * order));
}

double measuredGain(Iir &filter, double f)
{
    constexpr int kBlock = 4096;
    constexpr int kBlocks = 4; // the last one is measured
    std::vector<COMPLEX> block;
    for (int i = 0; i < kBlocks; ++i) {
        block = test::tone(kBlock, f, 1.0, 0.0, i * kBlock);
        filter.process(block.data(), kBlock);
    }
    return test::magnitude(test::component(block, f));
}
} // namespace

TEST(IirTest, GainIsButterworths)
{
    for (const Type type : {Type::LowPass, Type::HighPass, static_cast<Type>(5)}) {
        for (const auto &[fc, order, used] : {std::tuple{0.1, 1, 1}, {0.2, 2, 2}, {0.1, 5, 5},
                 {0.3, 10, 10}, {0.2, 99, 10}, {0.2, -3, 1}}) {
            Iir filter;
            ASSERT_TRUE(filter.init(fc, order, type));
            for (const double f : {0.05, 0.1, 0.2, -0.2, 0.4})
                EXPECT_NEAR(
                    measuredGain(filter, f), butterworth(fc, used, type, std::abs(f)), kRoundOff)
                    << "order " << order << ", at " << f;
        }
    }
}

TEST(IirTest, OutputDoesNotDependOnHowTheStreamIsCut)
{
    const auto stream = test::noise(3000, 1);
    Iir whole;
    Iir pieces;
    whole.init(0.1, 6, Type::LowPass);
    pieces.init(0.1, 6, Type::LowPass);
    auto expected = stream;
    whole.process(expected.data(), 3000);
    const auto cut = test::inBlocks(stream, test::randomCuts(3000, 700, 2),
        [&](COMPLEX *block, int n) { pieces.process(block, n); });
    EXPECT_LT(test::maxError(cut, expected), 1e-14);
}

TEST(IirTest, ClearAndInitEmptyTheHistory)
{
    const auto stream = test::noise(100, 3);
    Iir filter;
    filter.init(0.1, 4, Type::LowPass);
    auto expected = stream;
    filter.process(expected.data(), 100);
    for (const bool byInit : {false, true}) {
        if (byInit)
            filter.init(0.1, 4, Type::LowPass);
        else
            filter.clear();
        auto block = stream;
        filter.process(block.data(), 100);
        EXPECT_EQ(block, expected);
    }
}

TEST(IirTest, WithoutSetUpOrBufferItReportsAndWhenDisabledItPasses)
{
    const auto stream = test::noise(16, 4);
    auto block = stream;
    Iir filter;
    test::LogCapture log;
    filter.process(nullptr, 16);
    filter.process(block.data(), 0);
    EXPECT_EQ(
        log.warnings().filter("Iir::process").filter(" Incorrect input parameters.").size(), 2);
    filter.process(block.data(), 16);
    filter.init(0.1, 4, Type::LowPass);
    filter.free();
    filter.clear();
    filter.process(block.data(), 16);
    EXPECT_EQ(log.warnings().filter("Iir::process").filter(" Not initialize.").size(), 2);
    EXPECT_TRUE(filter.enable());
    filter.init(0.1, 4, Type::LowPass);
    filter.setEnable(false);
    filter.process(block.data(), 16);
    EXPECT_EQ(block, stream);
    EXPECT_EQ(log.lines().size(), 4);
}
