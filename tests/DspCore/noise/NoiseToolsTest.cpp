// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include "DspCore/noise/AutoNotchFilter.h"
#include "DspCore/noise/NoiseBlanker.h"
#include "DspCore/noise/NoiseReduction.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <complex>
#include <tuple>

namespace
{
// The predictor written out sample by sample from the textbook, on a line that repeats after 1024.
struct PlainLms
{
    int taps, delay;
    double rate, leak;
    std::array<std::complex<double>, 1024> line{};
    std::vector<std::complex<double>> weights = std::vector<std::complex<double>>(2048);
    unsigned position = 0;

    std::complex<double> operator()(std::complex<double> x)
    {
        line[--position % 1024] = x;
        const auto at = [&](int j) { return line[(position + unsigned(delay + j)) % 1024]; };
        std::complex<double> y;
        double power = 1e-10;
        for (int j = 0; j < taps; ++j) {
            y += std::conj(weights[std::size_t(j)]) * at(j);
            power += std::norm(at(j));
        }
        for (int j = 0; j < taps; ++j)
            weights[std::size_t(j)] = (1.0 - rate * leak) * weights[std::size_t(j)]
                + rate / power * at(j) * std::conj(x - y);
        return y;
    }
};

// Whole vectors, a rest, weights on the sample that is replaced, around the line, and settings that
// are limited to the line and the weights.
TEST(LmsTest, FollowsThePlainFormWithAnySetting)
{
    constexpr double kRoundOff = 1e-9; // a recursion over 3000 samples
    struct Row
    {
        int taps, delay, usedTaps, usedDelay;
        double rate = 0.01, leak = 0.1;
    };
    for (const Row row : {Row{60, 64, 60, 64, 0.0007, 1e-5}, Row{45, 45, 45, 45, 0.1, 1e-3},
             Row{1, 1023, 1, 1023}, Row{1200, 3, 1200, 3}, Row{INT_MAX, 3, 2048, 3},
             Row{-7, 5, 0, 5}, Row{60, INT_MIN + 9, 60, 9}, Row{60, INT_MAX, 60, 1023}}) {
        std::vector<COMPLEX> signal = test::noise(3000, 4);
        test::add(signal, test::tone(3000, 0.03, 2.0));
        std::vector<COMPLEX> expected = signal;
        PlainLms plain{row.usedTaps, row.usedDelay, row.rate, row.leak};
        for (COMPLEX &x : expected) {
            const std::complex<double> y = plain({x.re, x.im});
            x = {x.re - y.real(), x.im - y.imag()};
        }
        DspCore::AutoNotchFilter notch;
        notch.setTaps(row.taps);
        notch.setDelay(row.delay);
        notch.setRate(row.rate);
        notch.setLeak(row.leak);
        notch.setEnable(true);
        test::run(notch, signal, 700);
        EXPECT_LT(test::maxError(signal, expected), kRoundOff) << row.taps << " " << row.delay;
    }
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
