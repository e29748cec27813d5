// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include "DspCore/noise/AutoNotchFilter.h"
#include "DspCore/noise/NoiseBlanker.h"
#include "DspCore/noise/NoiseReduction.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <complex>
#include <numbers>
#include <tuple>

namespace
{
constexpr double kRate = 48000.0;

double level(const std::vector<COMPLEX> &signal, double hz)
{
    return test::magnitude(test::component(test::last(signal, 24000), hz / kRate));
}

// The predictor written out sample by sample from the textbook, on a plain growing history.
struct PlainLms
{
    int taps, delay;
    double rate, leak;
    std::vector<std::complex<double>> history, weights;

    std::complex<double> operator()(std::complex<double> x)
    {
        history.push_back(x);
        weights.resize(std::size_t(taps));
        const auto at = [&](int back) {
            const auto index = static_cast<long>(history.size()) - 1 - back;
            return index < 0 ? std::complex<double>() : history[std::size_t(index)];
        };
        std::complex<double> y;
        double power = 1e-10;
        for (int j = 0; j < taps; ++j) {
            y += std::conj(weights[std::size_t(j)]) * at(delay + j);
            power += std::norm(at(delay + j));
        }
        for (int j = 0; j < taps; ++j)
            weights[std::size_t(j)] = (1.0 - rate * leak) * weights[std::size_t(j)]
                + rate / power * at(delay + j) * std::conj(x - y);
        return y;
    }
};

std::vector<COMPLEX> notched(
    std::vector<COMPLEX> signal, int taps, int delay, double rate, double leak)
{
    DspCore::AutoNotchFilter notch;
    notch.setTaps(taps);
    notch.setDelay(delay);
    notch.setRate(rate);
    notch.setLeak(leak);
    notch.setEnable(true);
    test::run(notch, signal, 700);
    return signal;
}

TEST(LmsTest, FollowsThePlainForm)
{
    constexpr double kRoundOff = 1e-9; // a recursion over 3000 samples
    const std::tuple<int, int, double, double> rows[] = {
        {60, 64, 0.0007, 1e-5}, {1, 1, 0.05, 0.01}, {127, 890, 0.01, 0.1}, {45, 45, 0.1, 1e-3}};
    for (const auto &[taps, delay, rate, leak] : rows) {
        std::vector<COMPLEX> signal = test::noise(3000, 4);
        test::add(signal, test::tone(3000, 0.03, 2.0));
        std::vector<COMPLEX> expected = signal;
        PlainLms plain{taps, delay, rate, leak, {}, {}};
        for (COMPLEX &x : expected) {
            const std::complex<double> y = plain({x.re, x.im});
            x = {x.re - y.real(), x.im - y.imag()};
        }
        EXPECT_LT(test::maxError(notched(signal, taps, delay, rate, leak), expected), kRoundOff)
            << taps << " " << delay;
    }
}

TEST(LmsTest, AnySettingStaysWithinTheLineAndTheWeights)
{
    struct Row
    {
        int taps, delay, likeTaps, likeDelay; // the line repeats after 1024 samples
    };
    const std::vector<COMPLEX> in = test::noise(2500, 12);
    for (const Row row : {Row{INT_MAX, 3, 2048, 3}, Row{-7, 5, 0, 5}, Row{60, INT_MAX, 60, 1023},
             Row{60, INT_MIN + 9, 60, 9}, Row{1500, -1, 1500, 1023}}) {
        const auto out = notched(in, row.taps, row.delay, 0.0007, 1e-5);
        EXPECT_EQ(out, notched(in, row.likeTaps, row.likeDelay, 0.0007, 1e-5))
            << row.taps << " " << row.delay;
        EXPECT_EQ(out == in, row.taps < 1) << "without weights the input";
    }
}

TEST(LmsTest, LevelsAndProductsAreThoseOfTheTextbook)
{
    const COMPLEX block[] = {{3.0, -4.0}, {0.0, 12.0}};
    EXPECT_EQ(DspCore::NoiseReduction::calcRms(block, 2), 13.0);
    EXPECT_EQ(DspCore::AutoNotchFilter::calcRms(block, 0), 0.0);
    EXPECT_EQ(DspCore::NoiseReduction::Cmul({1.0, 2.0}, {3.0, -4.0}), (COMPLEX{11.0, 2.0}));
    EXPECT_EQ(DspCore::AutoNotchFilter::Cmul({0.0, 1.0}, {0.0, 1.0}), (COMPLEX{-1.0, 0.0}));
}

TEST(AutoNotchFilterTest, ASteadyToneIsThirtyDecibelsDownAfterTwoSeconds)
{
    std::vector<COMPLEX> signal = test::tone(96000 + 24000, 1000.0 / kRate, 0.5);
    DspCore::AutoNotchFilter notch;
    test::run(notch, signal);
    EXPECT_EQ(signal[500], test::tone(501, 1000.0 / kRate, 0.5).back()) << "off it passes";
    notch.setEnable(true);
    test::run(notch, signal);
    EXPECT_LT(test::decibels(level(signal, 1000.0) / 0.5), -30.0);
}

TEST(NoiseReductionTest, LiftsAToneOutOfNoise)
{
    constexpr double kGainDb = 8.0; // what a listener hears clearly
    std::vector<COMPLEX> signal = test::noise(4 * 48000, 8);
    test::add(signal, test::tone(4 * 48000, 1000.0 / kRate, 0.3));
    const auto snr = [](const std::vector<COMPLEX> &s) {
        const double tone = level(s, 1000.0);
        const double all = test::rms(test::last(s, 24000));
        return test::decibels(tone / std::sqrt(all * all - tone * tone));
    };
    const double before = snr(signal);
    DspCore::NoiseReduction reduction;
    reduction.setEnable(true);
    test::run(reduction, signal);
    EXPECT_GT(snr(signal) - before, kGainDb);
}

TEST(NoiseReductionTest, TheGainIsSmoothedAndItsRatioBounded)
{
    constexpr double kRoundOff = 1e-12;
    DspCore::NoiseReduction reduction;
    EXPECT_NEAR(reduction.newGain(0.0, 0.0), 0.99, kRoundOff) << "both at their floor: a half";
    EXPECT_NEAR(reduction.newGain(100.0, 0.0), 0.98 * 0.99 + 0.02 * 30.0, kRoundOff)
        << "at most 30";
    EXPECT_NEAR(reduction.newGain(0.0, std::nan("")), 0.98 * 1.5702 + 0.01, kRoundOff);
}

// One tap foretells a constant from the third sample on, so that 998 of 1000 come out; silence has
// a ratio of a half.
TEST(NoiseReductionTest, TheGainFollowsTheRatioOfBlockLevelsAndSurvivesAClear)
{
    constexpr double kFloor = 1e-6; // of the power that the step is divided by
    DspCore::NoiseReduction reduction;
    reduction.setTaps(1);
    reduction.setDelay(1);
    reduction.setRate(1.0);
    reduction.setLeak(0.0);
    reduction.setEnable(true);
    std::vector<COMPLEX> silence(1000, COMPLEX{0.0, 0.0});
    test::run(reduction, silence, 10);
    reduction.clear();
    std::vector<COMPLEX> ones(1000, COMPLEX{1.0, 0.0});
    reduction.process(ones);
    const double ratio = std::sqrt(1000.0) / std::sqrt(998.0) * 0.5;
    const double expected = 0.98 * (0.5 + 0.5 * std::pow(0.98, 100)) + 0.02 * ratio;
    EXPECT_NEAR(ones.back().re, expected, kFloor);
}

TEST(NoiseBlankerTest, Nb1MutesSevenSamplesFromTwoAheadOfThePeak)
{
    DspCore::NoiseBlanker blanker;
    blanker.setEnableNb1(true);
    blanker.setThresholdNb1(2.65);
    std::vector<COMPLEX> signal(3000, COMPLEX{1.0, 0.0});
    for (std::size_t n = 0; n < signal.size(); ++n)
        signal[n].im = static_cast<double>(n) * 1e-6; // a ruler
    signal[2000] = {30.0, 0.0};
    signal[2004] = {30.0, 0.0}; // within the mute: it does not restart it
    const std::vector<COMPLEX> in = signal;
    test::run(blanker, signal, 333);
    for (std::size_t n = 2; n < signal.size(); ++n) {
        if (n >= 2000 && n < 2007)
            ASSERT_EQ(signal[n], (COMPLEX{0.0, 0.0})) << n;
        else
            ASSERT_EQ(signal[n], in[n - 2]) << n;
    }
}

TEST(NoiseBlankerTest, Nb2ReplacesSinglePeaksByAShortMeanWithoutDelay)
{
    DspCore::NoiseBlanker blanker;
    blanker.setEnableNb2(true);
    blanker.setThresholdNb2(3.0);
    std::vector<COMPLEX> signal(2000, COMPLEX{1.0, -1.0});
    signal[1500] = {41.0, -1.0};
    test::run(blanker, signal, 512);
    EXPECT_EQ(signal[1499], (COMPLEX{1.0, -1.0}));
    EXPECT_EQ(signal[1500].re, 0.25 * 41.0 + 0.75);
    EXPECT_DOUBLE_EQ(signal[1500].im, -1.0);
    EXPECT_EQ(signal[1501], (COMPLEX{1.0, -1.0}));
}

// Power average 1 and a sample of power p: 0.001 p + 0.999 against the threshold 2.65.
TEST(NoiseBlankerTest, TheFirstThresholdIsNotSquared)
{
    const std::tuple<double, bool, bool> rows[] = {
        {1.7, false, true}, {1.6, false, false}, {1.7, true, false}, {2.7, true, true}};
    for (const auto &[amplitude, set, mutes] : rows) {
        DspCore::NoiseBlanker blanker;
        blanker.setEnableNb1(true);
        if (set)
            blanker.setThresholdNb1(2.65);
        COMPLEX block[] = {{amplitude, 0.0}, {0.0, 0.0}, {0.0, 0.0}};
        blanker.process(block, 3);
        EXPECT_EQ(block[2].re == 0.0, mutes) << amplitude << set;
    }
}
} // namespace
