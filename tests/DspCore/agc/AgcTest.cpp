// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/agc/Vm_Agc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace
{
using Agc = Velmora::CppDsp::Vm_Agc<double>;

constexpr double kRate = 48000.0;
constexpr double kRoundOff = 1e-9; // relative, over some ten thousand multiplications

struct Mode
{
    const char *name;
    double attackMs;
    double decayMs;
    unsigned hangMs;
};

std::ostream &operator<<(std::ostream &out, const Mode &mode)
{
    return out << mode.name;
}

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

class AgcModeTest : public testing::TestWithParam<Mode>
{
protected:
    void SetUp() override
    {
        const Mode mode = GetParam();
        mAgc.setAttack(mode.attackMs);
        mAgc.setDecay(mode.decayMs);
        mAgc.setHang(mode.hangMs);
    }

    Agc mAgc;
};

TEST_P(AgcModeTest, ALevelStepIsTimedByAttackHangAndDecay)
{
    const Mode mode = GetParam();
    const auto lookAhead = static_cast<int>(std::lround(mode.attackMs * kRate * 0.03));
    ASSERT_EQ(static_cast<int>(mAgc.lookAhead()), lookAhead);

    // Attack: at once with the first loud sample, towards 1 / 4.
    constexpr double kLoud = 4.0;
    const double before = mAgc.gain();
    const std::vector<double> attack = gainsAt(mAgc, kLoud, lookAhead);
    for (const int n : {0, 10, lookAhead - 1}) {
        const double expected =
            1.0 / kLoud + (before - 1.0 / kLoud) * std::pow(poleOf(mode.attackMs), n + 1);
        EXPECT_NEAR(attack[static_cast<std::size_t>(n)], expected, kRoundOff) << n;
    }

    // The loud samples leave the ring after one look-ahead; then the hang counts, and it contains
    // the look-ahead once more.
    const int hang = static_cast<int>(mode.hangMs * 0.001 * kRate + lookAhead);
    const std::vector<double> held = gainsAt(mAgc, 0.5, lookAhead + hang);
    const double rest = held.back();
    EXPECT_NEAR(rest, 1.0 / kLoud, 1e-3);
    EXPECT_EQ(held[held.size() / 2], rest);

    // Decay: a one-pole rise towards 1 / 0.5.
    const std::vector<double> decay = gainsAt(mAgc, 0.5, 20002);
    EXPECT_EQ(decay[0], rest) << "the hang ends one sample later";
    const double at = 2.0 + (rest - 2.0) * std::pow(poleOf(mode.decayMs), 20000);
    EXPECT_NEAR(decay[20000], at, kRoundOff);
}

INSTANTIATE_TEST_SUITE_P(Modes, AgcModeTest,
    testing::Values(Mode{"Long", 2.5, 800, 800}, Mode{"Slow", 2.0, 400, 400},
        Mode{"Med", 1.7, 250, 250}, Mode{"Fast", 1.2, 100, 100}, Mode{"User", 2.5, 1000, 1000}));

TEST(AgcTest, LoudSamplesComeOutWithTheGainAlreadyDown)
{
    Agc agc;
    agc.setAttack(2.0);
    gainsAt(agc, 1.0, 10000);
    double largest = 0.0;
    for (int n = 0; n < 6000; ++n) {
        COMPLEX x{0.0, 5.0}; // within the minimum gain of -20 dB
        agc.process(&x, 1);
        largest = std::max(largest, std::abs(x.im));
    }
    EXPECT_LT(largest, 1.0 + 1e-6);
    EXPECT_GT(largest, 0.999);
}

TEST(AgcTest, TheSignalIsDelayedByTheLookAheadLessOneSample)
{
    Agc agc;
    agc.setAttack(1.0);
    const std::size_t delay = agc.lookAhead() - 1;
    std::vector<COMPLEX> block(delay + 2, COMPLEX{0.0, 0.0});
    block[0] = {1.0, -1.0};
    agc.process(block.data(), static_cast<unsigned>(block.size()));
    EXPECT_EQ(block[delay - 1].re, 0.0);
    EXPECT_NEAR(block[delay].re, agc.gain(), 1e-3);
    EXPECT_EQ(block[delay].im, -block[delay].re);
    EXPECT_EQ(block[delay + 1].re, 0.0);
}

TEST(AgcTest, SilenceRaisesTheGainToItsMaximumAndNoFurther)
{
    Agc agc;
    agc.setDecay(1.0);
    agc.setHang(1);
    agc.setMaximumGain(40.0);
    EXPECT_NEAR(gainsAt(agc, 0.0, 20000).back(), 100.0, 1e-9);
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

TEST(AgcTest, GainLimitsAreKept)
{
    struct Row
    {
        double set;
        double fixedDb;
        double maximumDb;
    };
    for (const Row row : {Row{130, 120, 120}, Row{50, 50, 50}, Row{-70, -60, -19}}) {
        Agc fixed;
        fixed.setOn(false);
        fixed.setFixedGain(row.set);
        std::vector<COMPLEX> block(100000, COMPLEX{1.0, 0.0});
        fixed.process(block.data(), static_cast<unsigned>(block.size()));
        EXPECT_NEAR(test::decibels(block.back().re), row.fixedDb, 1e-3) << row.set;

        Agc quiet;
        quiet.setDecay(1.0);
        quiet.setHang(1);
        quiet.setMaximumGain(row.set);
        EXPECT_NEAR(test::decibels(gainsAt(quiet, 0.0, 20000).back()), row.maximumDb, 1e-3)
            << row.set;
    }
}

TEST(AgcTest, TheAttackIsLimited)
{
    for (const auto &[ms, limited] : {std::pair{0.01, 0.1}, {10.0, 5.0}}) {
        Agc agc;
        agc.setAttack(ms);
        EXPECT_EQ(agc.lookAhead(), std::lround(limited * kRate * 0.03)) << ms;
    }
}

TEST(AgcTest, ANewRateStartsAtAGainOfOne)
{
    Agc agc;
    ASSERT_LT(gainsAt(agc, 8.0, 5000).back(), 0.2);
    agc.setSampleRate(2.0 * kRate);
    EXPECT_EQ(agc.gain(), 1.0);
}

TEST(AgcTest, TheGainLivesThroughAClearAndThePeakDoesNot)
{
    Agc agc;
    const double loud = gainsAt(agc, 8.0, 5000).back();
    agc.clear();
    COMPLEX x{1e-3, 0.0};
    agc.process(&x, 1);
    EXPECT_EQ(agc.gain(), loud);
    EXPECT_EQ(x.re, 0.0);
}

TEST(AgcTest, ALookAheadOfOneSampleIsLeftAtARateThatIsNoRate)
{
    for (const double rate : {0.0, -48000.0, 100.0, std::nan("")}) {
        Agc agc;
        agc.setSampleRate(rate);
        EXPECT_EQ(agc.lookAhead(), rate == 100.0 ? 3u : 1u) << rate;
        std::vector<COMPLEX> block = test::noise(100, 2);
        agc.process(block.data(), 100);
    }
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
