// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/CtcssTones.h"
#include "DspCore/audio/Sql.h"
#include "DspCore/audio/SqlCtcss.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
using DspCore::Sql;
using DspCore::SqlCtcss;

constexpr double kRate = 48000.0;
constexpr double kStrong = -60.0; // dBm
constexpr double kThreshold = -100.0;
constexpr int kBlock = 512;

// Demodulated audio: a sub-audible tone and a loud audible one, the same in both parts.
std::vector<COMPLEX> audio(double subToneHz, int blocks)
{
    std::vector<COMPLEX> signal(static_cast<std::size_t>(blocks * kBlock));
    for (std::size_t n = 0; n < signal.size(); ++n) {
        const double t = static_cast<double>(n) / kRate;
        const double value = 0.1 * std::sin(2 * std::numbers::pi * subToneHz * t)
            + 0.4 * std::sin(2 * std::numbers::pi * 1000.0 * t);
        signal[n] = {value, value};
    }
    return signal;
}

void run(SqlCtcss &squelch, std::vector<COMPLEX> &signal, double level)
{
    for (std::size_t at = 0; at + kBlock <= signal.size(); at += kBlock)
        squelch.process(&signal[at], kBlock, level);
}

double lastBlock(const std::vector<COMPLEX> &signal)
{
    return test::rms({signal.end() - kBlock, signal.end()});
}

SqlCtcss tuned(int tone)
{
    SqlCtcss squelch;
    squelch.setTone(tone);
    squelch.setSampleRate(kRate); // moves the filter
    squelch.setThreshold(kThreshold);
    squelch.setEnable(true);
    return squelch;
}

TEST(SqlTest, OpensFromThreeDecibelsBelowTheThreshold)
{
    struct Row
    {
        bool enable;
        double level;
        bool open;
    };
    for (const Row row : {Row{true, -103.0, true}, Row{true, -103.001, false},
             Row{true, -50.0, true}, Row{false, -140.0, true}}) {
        Sql squelch;
        squelch.setThreshold(kThreshold);
        squelch.setEnable(row.enable);
        std::vector<COMPLEX> block = test::noise(kBlock, 1);
        const std::vector<COMPLEX> before = block;
        squelch.process(block.data(), kBlock, row.level);
        EXPECT_EQ(block == before, row.open) << row.level;
        EXPECT_EQ(test::rms(block) == 0.0, !row.open) << row.level;
    }
}

TEST(SqlCtcssTest, WithoutToneSquelchOnlyTheLevelCounts)
{
    for (const bool enable : {false, true}) {
        for (const double level : {-103.0, -104.0}) {
            SqlCtcss squelch;
            squelch.setEnableSql(enable);
            squelch.setThreshold(kThreshold);
            const std::vector<COMPLEX> before = test::noise(kBlock, 2);
            std::vector<COMPLEX> block = before;
            squelch.process(block.data(), kBlock, level);
            if (enable && level < -103.0)
                EXPECT_NEAR(test::rms(block) / test::rms(before), 1e-8, 1e-16);
            else
                EXPECT_EQ(block, before);
        }
    }
}

TEST(SqlCtcssTest, OpensForItsToneAndForNoOther)
{
    // Neighbours closer than 3.6 Hz overlap, so tones are taken that stand apart.
    for (const int tone : {0, 12, 24, 32, 40}) {
        const double hz = Velmora::CTCSS[std::size_t(tone)];
        SqlCtcss squelch = tuned(tone);
        std::vector<COMPLEX> right = audio(hz, 300);
        run(squelch, right, kStrong);
        EXPECT_NEAR(lastBlock(right), 0.4, 0.02) << hz << ": open, and the sub-tone is gone";

        SqlCtcss other = tuned(tone);
        std::vector<COMPLEX> wrong = audio(hz + 12.0, 300);
        run(other, wrong, kStrong);
        EXPECT_LT(lastBlock(wrong), 1e-7) << hz;
    }
}

TEST(SqlCtcssTest, AWeakSignalIsMutedWhateverItsTone)
{
    SqlCtcss squelch = tuned(12);
    std::vector<COMPLEX> signal = audio(100.0, 300);
    run(squelch, signal, -104.0);
    EXPECT_LT(lastBlock(signal), 1e-7);
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

TEST(SqlCtcssTest, AToneOutsideTheTableOpensForNothing)
{
    for (const int tone : {42, 1 << 30, -(1 << 30)}) {
        SqlCtcss squelch = tuned(tone);
        std::vector<COMPLEX> signal = audio(tone < 0 ? 67.0 : 254.1, 100);
        run(squelch, signal, kStrong);
        EXPECT_LT(lastBlock(signal), 1e-7) << tone;
    }
}

TEST(SqlCtcssTest, FrequenciesFindTheirIndex)
{
    struct Row
    {
        float hz;
        int index;
    };
    for (const Row row : {Row{67.0f, 0}, Row{65.1f, -1}, Row{254.1f, 41}, Row{256.0f, -1},
             Row{205.0f, 32}, Row{206.5f, 33}, Row{0.0f, -1}, Row{110.0f, 15}})
        EXPECT_EQ(SqlCtcss::getIndexFreq(row.hz), row.index) << row.hz;
}
} // namespace
