// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Iir.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using DspCore::Iir;

// 1 / sqrt(1 + w^2n), w the ratio of the prewarped frequencies (Butterworth 1930); the order is at
// most 10.
TEST(IirTest, GainIsButterworths)
{
    constexpr double kRoundOff = 1e-8; // ten poles, tones of 4096 samples
    for (const Iir::Type type : {Iir::Type::LowPass, Iir::Type::HighPass}) {
        for (const auto &[fc, order, used] : {std::tuple{0.1, 5, 5}, {0.2, 99, 10}}) {
            Iir filter;
            ASSERT_TRUE(filter.init(fc, order, type));
            auto block = test::tone(8192, 0.15);
            test::run(filter, block);
            block.erase(block.begin(), block.begin() + 4096); // it settles
            const double ratio =
                std::tan(std::numbers::pi * 0.15) / std::tan(std::numbers::pi * fc);
            const double w = type == Iir::Type::LowPass ? ratio : 1.0 / ratio;
            EXPECT_NEAR(test::magnitude(test::component(block, 0.15)),
                1.0 / std::sqrt(1.0 + std::pow(w, 2.0 * used)), kRoundOff);
        }
    }
}
