// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/agc/RunMaxima.h"
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

TEST(AgcTest, ALevelStepIsTimedByAttackHangAndDecay)
{
    constexpr double kAttackMs = 1.7;
    constexpr double kDecayMs = 250.0;
    constexpr unsigned kHangMs = 100;
    constexpr double kSettled = 1e-3; // the attack's own rest after 30 of its times
    Agc agc;
    agc.setAttack(kAttackMs);
    agc.setDecay(kDecayMs);
    agc.setHang(kHangMs);
    const auto lookAhead = static_cast<int>(std::lround(kAttackMs * kRate * 0.03));
    ASSERT_EQ(static_cast<int>(agc.lookAhead()), lookAhead);

    // Attack: at once with the first loud sample, towards 1 / 4.
    constexpr double kLoud = 4.0;
    const double before = agc.gain();
    const std::vector<double> attack = gainsAt(agc, kLoud, lookAhead);
    for (const int n : {0, 10, lookAhead - 1}) {
        const double expected =
            1.0 / kLoud + (before - 1.0 / kLoud) * std::pow(poleOf(kAttackMs), n + 1);
        EXPECT_NEAR(attack[static_cast<std::size_t>(n)], expected, kRoundOff) << n;
    }

    // The loud samples leave the ring after one look-ahead; then the hang counts, and it contains
    // the look-ahead once more.
    const int hang = static_cast<int>(kHangMs * 0.001 * kRate + lookAhead);
    const std::vector<double> held = gainsAt(agc, 0.5, lookAhead + hang);
    const double rest = held.back();
    EXPECT_NEAR(rest, 1.0 / kLoud, kSettled);
    EXPECT_EQ(held[held.size() / 2], rest);

    // Decay: a one-pole rise towards 1 / 0.5.
    const std::vector<double> decay = gainsAt(agc, 0.5, 20002);
    EXPECT_EQ(decay[0], rest) << "the hang ends one sample later";
    const double at = 2.0 + (rest - 2.0) * std::pow(poleOf(kDecayMs), 20000);
    EXPECT_NEAR(decay[20000], at, kRoundOff);
}

// Off it moves to its fixed gain over 50 ms; on it rises to the maximum in silence.
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
        std::vector<COMPLEX> block(100000, COMPLEX{1.0, -0.5});
        fixed.process(block.data(), static_cast<unsigned>(block.size()));
        const double target = std::pow(10.0, row.fixedDb / 20.0);
        const double glided = target + (1.0 - target) * std::pow(poleOf(50.0), 1001);
        EXPECT_NEAR(block[1000].re / glided, 1.0, kRoundOff);
        EXPECT_NEAR(test::decibels(-2.0 * block.back().im), row.fixedDb, kSettledDb) << row.set;

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
    const std::tuple<double, double, unsigned> rows[] = {
        {0.01, kRate, 144}, {10.0, kRate, 7200}, {1.0, 100.0, 3}, {1.0, std::nan(""), 1}};
    for (const auto &[attackMs, rate, samples] : rows) {
        Agc agc;
        agc.setSampleRate(rate);
        agc.setAttack(attackMs);
        EXPECT_EQ(agc.lookAhead(), samples) << attackMs << " " << rate;
    }
}

TEST(AgcTest, TheGainLivesThroughAClearAndNewTimesButNotThroughANewRate)
{
    Agc agc;
    const double loud = gainsAt(agc, 8.0, 5000).back();
    ASSERT_LT(loud, 0.2);
    agc.clear();
    agc.setAttack(2.0);
    agc.setHang(50);
    COMPLEX x{1e-3, 0.0};
    agc.process(&x, 1);
    EXPECT_EQ(agc.gain(), loud);
    EXPECT_EQ(x.re, 0.0) << "the look-ahead is empty";
    agc.setSampleRate(2.0 * kRate);
    EXPECT_EQ(agc.gain(), 1.0);
}

// A ring shorter than a run, one of whole runs, one with a rest; blocks within a run, across runs,
// around the end and longer than the ring.
TEST(AgcTest, AKeptLookAheadHoldsTheNewestSamplesOverAChangeOfItsLength)
{
    constexpr double kFirstMs = 1.0;
    constexpr double kRamp = 480.0; // samples
    for (const double secondMs : {0.7, 1.0, 2.5}) {
        Agc agc;
        agc.setKeeps(true);
        agc.setAttack(kFirstMs);
        agc.setMaximumGain(0.0); // with samples below 1: always
        int given = 0;
        const auto next = [&] {
            COMPLEX x{++given * 1e-5, 0.0};
            agc.process(&x, 1);
            return int(std::lround(x.re * 1e5));
        };
        for (int n = 0; n < 5000; ++n)
            next();
        agc.setAttack(secondMs);
        const int last = given;
        const int delay = int(agc.lookAhead()) - 1;
        const int oldest = last - int(std::lround(kFirstMs * kRate * 0.03)) + 1; // that was kept
        for (int n = 0; n < 3 * delay; ++n) {
            const int due = given + 1 - delay;
            // Out of the silence in front they come in a ramp of 10 ms.
            const double ramp = secondMs > kFirstMs ? (due - oldest) / kRamp : 1.0;
            const int expected = int(std::lround(due * std::clamp(ramp, 0.0, 1.0)));
            EXPECT_EQ(next(), due >= oldest ? expected : 0) << secondMs << " ms, sample " << n;
        }
        agc.setOn(false);
        agc.setOn(true);
        EXPECT_EQ(next(), 0) << "nothing of the time before it was off";
    }
}

TEST(RunMaximaTest, AnswersAsAScanOfTheWholeRing)
{
    const auto stream = test::noise(20000, 2);
    for (const std::size_t size : {1, 30, 128, 1440}) {
        std::vector<COMPLEX> ring(size, COMPLEX{0.0, 0.0});
        DspCore::RunMaxima maxima;
        maxima.reset(size);
        EXPECT_EQ(maxima.largest(), 0.0);
        std::size_t write = 0;
        std::size_t at = 0;
        for (std::size_t round = 0; at + 2000 < stream.size(); ++round) {
            const std::size_t length = round % 20 == 19 ? 2000 : 1 + 37 * round % 150;
            const std::size_t first = write;
            for (const std::size_t end = at + length; at < end; ++at) {
                const double gain = round % 7 == 0 ? 1.0 : 0.1; // peaks come and go
                ring[write] = {gain * stream[at].re, gain * stream[at].im};
                write = (write + 1) % size;
            }
            maxima.update(ring.data(), size, first, length);
            double largest = 0.0;
            for (const COMPLEX &x : ring)
                largest = std::max({largest, std::abs(x.re), std::abs(x.im)});
            ASSERT_EQ(maxima.largest(), largest) << round;
        }
    }
}
} // namespace
