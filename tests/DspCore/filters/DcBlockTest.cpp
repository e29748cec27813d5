// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DcBlock.h"

#include <cmath>
#include <gtest/gtest.h>

using DspCore::DcBlock;

namespace
{
constexpr double kRoundOff = 1e-12;
}

TEST(DcBlockTest, AConstantFadesByHalfAPercentPerSample)
{
    DcBlock block;
    block.init(0.5);
    std::vector<COMPLEX> signal(1000, COMPLEX{2.0, -3.0});
    block.process(signal.data(), 0);
    block.process(signal.data(), -1);
    block.process(signal.data(), 1000);
    for (int n : {0, 1, 10, 999}) {
        const double fade = std::pow(0.995, n);
        EXPECT_NEAR(signal[std::size_t(n)].re, 2.0 * fade, kRoundOff) << n;
        EXPECT_NEAR(signal[std::size_t(n)].im, -3.0 * fade, kRoundOff) << n;
    }
}
