// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "FmSoft/FilterFM.h"
#include "FmSoft/PilotPhaseLock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kRoundOff = 1e-12;

using Cuts = std::vector<std::size_t>; // block sizes, in turn

// Runs a filter over a stream in blocks.
SampleVector inBlocks(DownsampleFilter &filter, const SampleVector &in, const Cuts &cuts)
{
    SampleVector all, out;
    std::size_t at = 0;
    for (std::size_t i = 0; at < in.size(); ++i) {
        const std::size_t size = std::min(cuts[i % cuts.size()], in.size() - at);
        filter.process({in.begin() + long(at), in.begin() + long(at + size)}, out);
        all.insert(all.end(), out.begin(), out.end());
        at += size;
    }
    return all;
}

// Coefficients from the closed form of a sinc under a sinc window, sum 1, at any real index.
double tap(int taps, double cutoff, int i)
{
    const auto sinc = [](double x) {
        return x == 0.0 ? 1.0 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
    };
    const auto raw = [&](int k) {
        const double t = 2.0 * k - (taps - 1);
        return sinc(t * cutoff) * sinc(t / (taps + 1));
    };
    double sum = 0.0;
    for (int k = 0; k < taps; ++k)
        sum += raw(k);
    return i < 0 || i >= taps ? 0.0 : raw(i) / sum;
}

// Output i is the filter at input i * factor; between two inputs the coefficients are interpolated,
// with a zero before the first and after the last. A whole factor uses them as they are, one sample
// later.
TEST(DownsampleFilterTest, FollowsItsCoefficientsHoweverTheStreamIsCut)
{
    constexpr int kOrder = 32;
    constexpr double kCutoff = 0.1;
    SampleVector in;
    for (const COMPLEX &x : test::noise(2000, 9))
        in.push_back(x.re);
    for (const auto &[factor, whole] : {std::pair{1.0, false}, {2.5, false},
             {192000.0 / 44100.0, false}, {1.0, true}, {5.0, true}}) {
        SampleVector expected;
        for (int i = 0; i * factor < 2000.0; ++i) {
            const int position = static_cast<int>(i * factor);
            const double rest = i * factor - position;
            double y = 0.0;
            for (int j = 0; j <= std::min(kOrder, position); ++j)
                y += ((1.0 - rest) * tap(kOrder, kCutoff, j - 1) + rest * tap(kOrder, kCutoff, j))
                    * in[std::size_t(position - j)];
            expected.push_back(y);
        }
        for (const Cuts &cuts : {Cuts{2000}, {7, 1, 100, 33}}) {
            DownsampleFilter filter(kOrder, kCutoff, factor, whole);
            EXPECT_LT(test::maxError(inBlocks(filter, in, cuts), expected), kRoundOff) << factor;
        }
    }
}

template <typename Filter>
double responseAt(Filter filter, double frequency)
{
    SampleVector in, out;
    for (int n = 0; n < 40000; ++n)
        in.push_back(std::cos(kTwoPi * frequency * n));
    filter.process(in, out);
    double squares = 0.0;
    for (std::size_t n = 20000; n < out.size(); ++n)
        squares += out[n] * out[n];
    return std::sqrt(2.0 * squares / 20000.0);
}

TEST(IirFiltersTest, AreThreeDecibelsDownAtTheirCutOff)
{
    constexpr double kMatchedPoles = 0.01; // the design leaves the zeros where they fall
    constexpr double kSlopeDb = 1.0;
    const HighPassFilterIir highPass(0.01);
    EXPECT_NEAR(responseAt(highPass, 0.01), std::sqrt(0.5), kMatchedPoles);
    EXPECT_NEAR(test::decibels(responseAt(highPass, 0.001)), -40.0, kSlopeDb); // 12 dB an octave
    const LowPassFilterIir lowPass(0.01);
    EXPECT_NEAR(responseAt(lowPass, 0.01), std::sqrt(0.5), kMatchedPoles);
    EXPECT_NEAR(test::decibels(responseAt(lowPass, 0.04)), -48.0, kSlopeDb); // 24 dB an octave
}

TEST(PilotPhaseLockTest, LocksAfterItsDelayAndLetsGoBelowTheSmallestPilot)
{
    constexpr double kRate = 192000.0;
    constexpr double kSmallest = 0.04; // amplitude
    constexpr double kRipple = 0.02;   // of the level inside a block
    PilotPhaseLock lock(19000.0 / kRate, 50.0 / kRate, kSmallest);
    SampleVector in(512), out;
    std::size_t n = 0;
    const auto feed = [&](double amplitude) {
        for (double &x : in)
            x = amplitude * std::sin(kTwoPi * 19003.0 / kRate * double(n++) + 1.0);
        lock.process(in, out);
        return lock.ppsEvents().size();
    };
    while (!lock.locked() && n < 400000)
        feed(0.1);
    EXPECT_GE(n, 76800u); // 20 / bandwidth
    EXPECT_LT(n, 120000u);
    EXPECT_NEAR(lock.pilotLevel(), 0.1, kRipple);

    std::size_t seconds = 0;
    std::size_t end = n + 2 * 192000;
    while (n < end)
        seconds += feed(0.1);
    EXPECT_EQ(seconds, 2u) << "one event for every 19000 periods";
    for (const double amplitude : {1.5 * kSmallest, 0.75 * kSmallest}) {
        end = n + 192000;
        while (n < end)
            feed(amplitude);
        EXPECT_EQ(lock.locked(), amplitude > kSmallest) << amplitude;
    }
}
} // namespace
