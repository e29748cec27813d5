// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DcBlock.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

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
    block.process(signal.data(), 1000);
    for (int n : {0, 1, 10, 999}) {
        const double fade = std::pow(0.995, n);
        EXPECT_NEAR(signal[std::size_t(n)].re, 2.0 * fade, kRoundOff) << n;
        EXPECT_NEAR(signal[std::size_t(n)].im, -3.0 * fade, kRoundOff) << n;
    }
}

TEST(DcBlockTest, OutputDoesNotDependOnHowTheStreamIsCut)
{
    const auto stream = test::noise(3000, 1);
    DcBlock whole;
    DcBlock pieces;
    auto expected = stream;
    whole.process(expected.data(), 3000);
    const auto cut =
        test::inBlocks(stream, test::randomCuts(3000, 700, 2), [&](COMPLEX *block, int n) {
            pieces.process(block, n);
            pieces.process(block, 0);
            pieces.process(block, -1);
        });
    EXPECT_EQ(cut, expected);
}

TEST(DcBlockTest, ClearAndInitEmptyTheState)
{
    const auto stream = test::noise(100, 3);
    DcBlock fresh;
    auto expected = stream;
    fresh.process(expected.data(), 100);
    for (const bool byInit : {false, true}) {
        DcBlock used;
        auto block = stream;
        used.process(block.data(), 100);
        if (byInit)
            EXPECT_TRUE(used.init(0.1));
        else
            used.clear();
        block = stream;
        used.process(block.data(), 100);
        EXPECT_EQ(block, expected);
    }
}
