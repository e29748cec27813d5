// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Iir.h"
#include "support/Signals.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using DspCore::Iir;
using Type = Iir::Type;

namespace
{
/// 1 / sqrt(1 + w^2n), w the ratio of the prewarped frequencies (Butterworth 1930).
double butterworth(double fc, int order, Type type, double f)
{
    const double w = std::tan(std::numbers::pi * f) / std::tan(std::numbers::pi * fc);
    return 1.0 / std::sqrt(1.0 + std::pow(type == Type::LowPass ? w : 1.0 / w, 2.0 * order));
}
} // namespace

TEST(IirTest, GainIsButterworths)
{
    constexpr double kRoundOff = 1e-8; // ten poles, tones of 4096 samples
    for (const Type type : {Type::LowPass, Type::HighPass, static_cast<Type>(5)}) {
        for (const auto &[fc, order, used] : {std::tuple{0.1, 5, 5}, {0.2, 99, 10}, {0.2, -3, 1}}) {
            for (const double f : {0.05, -0.2, 0.4}) {
                Iir filter;
                ASSERT_TRUE(filter.init(fc, order, type));
                auto block = test::tone(4096, f);
                filter.process(block.data(), 4096); // settles
                block = test::tone(4096, f, 1.0, 0.0, 4096);
                filter.process(block.data(), 4096);
                EXPECT_NEAR(test::magnitude(test::component(block, f)),
                    butterworth(fc, used, type, std::abs(f)), kRoundOff)
                    << "order " << order << ", at " << f;
            }
        }
    }
}

TEST(IirTest, ADisabledFilterPassesBlocks)
{
    const auto stream = test::noise(16, 4);
    auto block = stream;
    Iir filter;
    EXPECT_TRUE(filter.enable());
    filter.init(0.1, 4, Type::LowPass);
    filter.setEnable(false);
    filter.process(block.data(), 16);
    EXPECT_EQ(block, stream);
}
