// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/CtcssTones.h"
#include "DspCore/audio/Sql.h"
#include "DspCore/audio/SqlCtcss.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>

namespace
{
using DspCore::Sql;
using DspCore::SqlCtcss;

constexpr double kRate = 48000.0;
constexpr double kStrong = -60.0; // dBm
constexpr double kThreshold = -100.0;
constexpr double kMute = 1e-8; // a muted block is 160 dB down
constexpr double kRoundOff = 1e-8;
constexpr int kBlock = 512;

// What is left at the end of demodulated audio with a sub-audible and a loud audible tone, the same
// in both parts.
double heard(int tone, double subToneHz, double level)
{
    SqlCtcss squelch;
    squelch.setTone(tone);
    squelch.setSampleRate(kRate); // moves the filter
    squelch.setThreshold(kThreshold);
    squelch.setEnable(true);
    std::vector<COMPLEX> block(kBlock);
    for (int n = 0; n < 200 * kBlock; ++n) {
        const double t = 2.0 * std::numbers::pi * n / kRate;
        const double value = 0.1 * std::sin(subToneHz * t) + 0.4 * std::sin(1000.0 * t);
        block[std::size_t(n % kBlock)] = {value, value};
        if (n % kBlock == kBlock - 1)
            squelch.process(block.data(), kBlock, level);
    }
    return test::rms(block);
}

TEST(SquelchTest, OpensFromThreeDecibelsBelowTheThreshold)
{
    const std::tuple<bool, double, bool> rows[] = {// on, level, open
        {true, -103.0, true}, {true, -103.001, false}, {true, -50.0, true}, {false, -140.0, true}};
    const std::vector<COMPLEX> before = test::noise(kBlock, 1);
    for (const auto &[enable, level, open] : rows) {
        Sql squelch;
        squelch.setThreshold(kThreshold);
        squelch.setEnable(enable);
        std::vector<COMPLEX> block = before;
        squelch.process(block.data(), kBlock, level);
        EXPECT_EQ(block == before, open) << level;
        EXPECT_EQ(test::rms(block) == 0.0, !open) << level;

        SqlCtcss withoutTone;
        withoutTone.setThreshold(kThreshold);
        withoutTone.setEnableSql(enable);
        block = before;
        withoutTone.process(block.data(), kBlock, level);
        EXPECT_EQ(block == before, open) << level;
        const double gain = test::rms(block) / test::rms(before);
        EXPECT_NEAR(gain, open ? 1.0 : kMute, kMute * kRoundOff) << level;
    }
}

TEST(SqlCtcssTest, OpensForAStrongSignalWithItsToneOnly)
{
    constexpr double kSubTone = 0.02; // what the high-pass may leave of it
    // Neighbours closer than 3.6 Hz overlap, so tones are taken that stand apart.
    for (const int tone : {0, 24, 40}) {
        const double hz = Velmora::CTCSS[std::size_t(tone)];
        EXPECT_NEAR(heard(tone, hz, kStrong), 0.4, kSubTone) << hz;
        EXPECT_LT(heard(tone, hz + 12.0, kStrong), 10.0 * kMute) << hz;
        EXPECT_LT(heard(tone, hz, -104.0), 10.0 * kMute) << hz;
    }
    EXPECT_LT(heard(42, 254.1, kStrong), 10.0 * kMute) << "outside of the table no tone opens";
}

TEST(SqlCtcssTest, LocksOnATenthAndLosesOnASixthOfASecondOfCountedBlocks)
{
    // One period a block, so each block counts once: 481 samples of 100 Hz.
    constexpr int kLength = 481;
    std::vector<COMPLEX> period(kLength);
    for (int n = 0; n < kLength; ++n)
        period[std::size_t(n)].im = std::sin(2 * std::numbers::pi * (n + 0.5) / 480.0);

    SqlCtcss squelch;
    squelch.setTone(40);
    for (int n = 0; n < 100; ++n) // the smoothed frequency comes to rest
        EXPECT_FALSE(squelch.findCTCSS(period.data(), kLength));

    const auto blocksUntil = [&](bool locked) {
        int blocks = 1;
        while (squelch.findCTCSS(period.data(), kLength) != locked && blocks < 100)
            ++blocks;
        return blocks;
    };
    squelch.setTone(12);
    EXPECT_EQ(blocksUntil(true), 10); // 10 * 481 is the first above 4800
    squelch.setTone(13);
    EXPECT_EQ(blocksUntil(false), 17); // 17 * 481 is the first above 8000
}

} // namespace
