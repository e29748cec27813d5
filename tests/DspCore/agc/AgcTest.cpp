// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/agc/LargestPart.h"
#include "DspCore/agc/Vm_Agc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{
using Agc = Velmora::CppDsp::Vm_Agc<double>;

constexpr double kRate = 48000.0;
constexpr double kRoundOff = 1e-9; // relative, over some ten thousand multiplications

double poleOf(double ms)
{
    return std::exp(-1000.0 / (ms * kRate));
}

// Feeds a constant level sample by sample, so that the ring's peak is up to date for each.
std::vector<double> gainsAt(Agc &agc, double level, int samples)
{
    std::vector<double> gains;
    for (int n = 0; n < samples; ++n) {
        COMPLEX x{level, 0.0};
        agc.process(&x, 1);
        gains.push_back(agc.gain());
    }
    return gains;
}

struct Mode
{
    double attackMs, decayMs;
    unsigned hangMs;
};

class AgcModeTest : public testing::TestWithParam<Mode>
{ };

TEST_P(AgcModeTest, ALevelStepIsTimedByAttackHangAndDecay)
{
    constexpr double kSettled = 1e-3; // the attack's own rest after 30 of its times
    const Mode mode = GetParam();
    Agc agc;
    agc.setAttack(mode.attackMs);
    agc.setDecay(mode.decayMs);
    agc.setHang(mode.hangMs);
    const auto lookAhead = static_cast<int>(std::lround(mode.attackMs * kRate * 0.03));
    ASSERT_EQ(static_cast<int>(agc.lookAhead()), lookAhead);

    // Attack: at once with the first loud sample, towards 1 / 4.
    constexpr double kLoud = 4.0;
    const double before = agc.gain();
    const std::vector<double> attack = gainsAt(agc, kLoud, lookAhead);
    for (const int n : {0, 10, lookAhead - 1}) {
        const double expected =
            1.0 / kLoud + (before - 1.0 / kLoud) * std::pow(poleOf(mode.attackMs), n + 1);
        EXPECT_NEAR(attack[static_cast<std::size_t>(n)], expected, kRoundOff) << n;
    }

    // The loud samples leave the ring after one look-ahead; then the hang counts, and it contains
    // the look-ahead once more.
    const int hang = static_cast<int>(mode.hangMs * 0.001 * kRate + lookAhead);
    const std::vector<double> held = gainsAt(agc, 0.5, lookAhead + hang);
    const double rest = held.back();
    EXPECT_NEAR(rest, 1.0 / kLoud, kSettled);
    EXPECT_EQ(held[held.size() / 2], rest);

    // Decay: a one-pole rise towards 1 / 0.5.
    const std::vector<double> decay = gainsAt(agc, 0.5, 20002);
    EXPECT_EQ(decay[0], rest) << "the hang ends one sample later";
    const double at = 2.0 + (rest - 2.0) * std::pow(poleOf(mode.decayMs), 20000);
    EXPECT_NEAR(decay[20000], at, kRoundOff);
}

INSTANTIATE_TEST_SUITE_P(Modes, AgcModeTest,
    testing::Values(Mode{2.5, 800, 800}, Mode{1.7, 250, 250}, Mode{1.2, 100, 100}));

TEST(AgcTest, LoudSamplesComeOutOneLookAheadLateWithTheGainAlreadyDown)
{
    constexpr double kOvershoot = 1e-6; // what 30 attack times leave
    Agc agc;
    agc.setAttack(2.0);
    gainsAt(agc, 1.0, 10000);
    const std::size_t delay = agc.lookAhead() - 1;
    std::vector<double> out;
    for (int n = 0; n < 6000; ++n) {
        COMPLEX x{0.0, 5.0}; // within the minimum gain of -20 dB
        agc.process(&x, 1);
        EXPECT_EQ(x.im == 0.0, out.size() < delay) << n;
        out.push_back(x.im);
    }
    const double largest = *std::max_element(out.begin(), out.end());
    EXPECT_LT(largest, 1.0 + kOvershoot);
    EXPECT_GT(largest, 0.999);
}

TEST(AgcTest, SwitchedOffItIsAFixedGainThatMovesOverFiftyMilliseconds)
{
    Agc agc;
    agc.setOn(false);
    agc.setFixedGain(20.0);
    std::vector<COMPLEX> block(2400, COMPLEX{1.0, -0.5});
    agc.process(block.data(), static_cast<unsigned>(block.size()));
    for (const int n : {0, 1000, 2399}) {
        const double expected = 10.0 + (1.0 - 10.0) * std::pow(poleOf(50.0), n + 1);
        EXPECT_NEAR(block[static_cast<std::size_t>(n)].re, expected, kRoundOff);
        EXPECT_NEAR(block[static_cast<std::size_t>(n)].im, -0.5 * expected, kRoundOff);
    }
}

TEST(AgcTest, GainLimitsAreKeptInSilenceAndWhileOff)
{
    constexpr double kSettledDb = 1e-3;
    struct Row
    {
        double set, fixedDb, maximumDb;
    };
    for (const Row row : {Row{130, 120, 120}, Row{50, 50, 50}, Row{-70, -60, -19}}) {
        Agc fixed;
        fixed.setOn(false);
        fixed.setFixedGain(row.set);
        std::vector<COMPLEX> block(100000, COMPLEX{1.0, 0.0});
        fixed.process(block.data(), static_cast<unsigned>(block.size()));
        EXPECT_NEAR(test::decibels(block.back().re), row.fixedDb, kSettledDb) << row.set;

        Agc quiet;
        quiet.setDecay(1.0);
        quiet.setHang(1);
        quiet.setMaximumGain(row.set);
        const double gain = gainsAt(quiet, 0.0, 20000).back();
        EXPECT_NEAR(test::decibels(gain), row.maximumDb, kSettledDb) << row.set;
    }
}

// 30 attack times of 0.1 to 5 ms, and one sample at a rate that is no rate.
TEST(AgcTest, TheLookAheadIsLimited)
{
    const std::tuple<double, double, unsigned> rows[] = {{0.01, kRate, 144}, {10.0, kRate, 7200},
        {1.0, 100.0, 3}, {1.0, 0.0, 1}, {1.0, -kRate, 1}, {1.0, std::nan(""), 1}};
    for (const auto &[attackMs, rate, samples] : rows) {
        Agc agc;
        agc.setSampleRate(rate);
        agc.setAttack(attackMs);
        EXPECT_EQ(agc.lookAhead(), samples) << attackMs << " " << rate;
        std::vector<COMPLEX> block = test::noise(100, 2);
        agc.process(block.data(), 100);
    }
}

TEST(AgcTest, TheGainLivesThroughAClearAndNewTimesButNotThroughANewRate)
{
    Agc agc;
    const double loud = gainsAt(agc, 8.0, 5000).back();
    ASSERT_LT(loud, 0.2);
    agc.clear();
    agc.setAttack(2.0);
    agc.setDecay(100.0);
    agc.setHang(50);
    COMPLEX x{1e-3, 0.0};
    agc.process(&x, 1);
    EXPECT_EQ(agc.gain(), loud);
    EXPECT_EQ(x.re, 0.0) << "the look-ahead is empty";
    agc.setSampleRate(2.0 * kRate);
    EXPECT_EQ(agc.gain(), 1.0);
}

TEST(LargestPartTest, FindsThePeakWhereverItStands)
{
    for (const int length : {1, 2, 15, 16, 17, 33, 2880}) {
        for (const int at : {0, length / 2, length - 1}) {
            std::vector<COMPLEX> block = test::noise(length, 3);
            block[static_cast<std::size_t>(at)].im = -7.5;
            EXPECT_EQ(DspCore::largestPart(block.data(), block.size()), 7.5) << length;
        }
    }
    EXPECT_EQ(DspCore::largestPart(nullptr, 0), 0.0);
}
} // namespace
