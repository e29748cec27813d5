// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "FmSoft/FilterFM.h"
#include "FmSoft/PhaseDiscriminator.h"
#include "FmSoft/PilotPhaseLock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kRoundOff = 1e-12;
constexpr double kSinglePrecision = 2e-6;

using Cuts = std::vector<std::size_t>; // block sizes, in turn

SampleVector noise(int length)
{
    SampleVector out;
    for (const COMPLEX &x : test::noise(length, 9))
        out.push_back(x.re);
    return out;
}

IQSampleVector narrowed(const std::vector<COMPLEX> &in)
{
    IQSampleVector out;
    for (const COMPLEX &x : in)
        out.push_back({static_cast<float>(x.re), static_cast<float>(x.im)});
    return out;
}

std::vector<COMPLEX> widened(const IQSampleVector &in)
{
    std::vector<COMPLEX> out;
    for (const auto &x : in)
        out.push_back({x.re, x.im});
    return out;
}

// Runs a filter over a stream in blocks.
template <typename Vector, typename Filter, typename Out = Vector>
Out inBlocks(Filter &&filter, const Vector &in, const Cuts &cuts)
{
    Out all, out;
    std::size_t at = 0;
    for (std::size_t i = 0; at < in.size(); ++i) {
        const std::size_t size = std::min(cuts[i % cuts.size()], in.size() - at);
        filter.process(Vector(in.begin() + long(at), in.begin() + long(at + size)), out);
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
    const SampleVector in = noise(2000);
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

TEST(LowPassFilterFirIQTest, FollowsItsCoefficientsHoweverTheStreamIsCut)
{
    const IQSampleVector in = narrowed(test::noise(300, 2));
    std::vector<COMPLEX> expected(300, COMPLEX{0.0, 0.0});
    for (int n = 0; n < 300; ++n) {
        for (int j = 0; j <= 10 && j <= n; ++j) {
            expected[std::size_t(n)].re += tap(11, 0.26, j) * in[std::size_t(n - j)].re;
            expected[std::size_t(n)].im += tap(11, 0.26, j) * in[std::size_t(n - j)].im;
        }
    }
    for (const Cuts &cuts : {Cuts{300}, {4, 1, 9, 60}}) {
        LowPassFilterFirIQ filter(10, 0.26);
        EXPECT_LT(test::maxError(widened(inBlocks(filter, in, cuts)), expected), kSinglePrecision);
    }
}

TEST(FineTunerTest, ShiftsByAMultipleOfTheTableStep)
{
    const std::vector<COMPLEX> in = test::noise(1000, 3);
    for (const int shift : {0, 1, -5, 40}) {
        FineTuner tuner(64, shift);
        std::vector<COMPLEX> expected = in;
        const std::vector<COMPLEX> phasor = test::tone(1000, shift / 64.0);
        for (std::size_t n = 0; n < in.size(); ++n)
            expected[n] = {in[n].re * phasor[n].re - in[n].im * phasor[n].im,
                in[n].re * phasor[n].im + in[n].im * phasor[n].re};
        EXPECT_LT(test::maxError(widened(inBlocks(tuner, narrowed(in), {100, 3})), expected),
            kSinglePrecision)
            << shift;
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
    EXPECT_NEAR(responseAt(highPass, 0.25), 1.0, kMatchedPoles);
    EXPECT_NEAR(test::decibels(responseAt(highPass, 0.001)), -40.0, kSlopeDb); // 12 dB an octave

    const LowPassFilterIir lowPass(0.01);
    EXPECT_NEAR(responseAt(lowPass, 0.01), std::sqrt(0.5), kMatchedPoles);
    EXPECT_NEAR(responseAt(lowPass, 0.0001), 1.0, kMatchedPoles);
    EXPECT_NEAR(test::decibels(responseAt(lowPass, 0.04)), -48.0, kSlopeDb); // 24 dB an octave
}

TEST(LowPassFilterRCTest, StepsTowardsTheInputByItsTimeConstant)
{
    LowPassFilterRC filter(2.4);
    SampleVector ones(10, 1.0), out;
    filter.process(ones, out);
    for (int n = 0; n < 10; ++n)
        EXPECT_NEAR(out[std::size_t(n)], 1.0 - std::exp(-(n + 1) / 2.4), kRoundOff);
}

TEST(PhaseDiscriminatorTest, FullDeviationReadsOneAndTheLastSampleIsKept)
{
    constexpr double kArctangent = 0.005; // of the discriminator's own one
    const IQSampleVector in = narrowed(test::tone(100, 0.05, 0.7));
    const auto out = inBlocks<IQSampleVector, PhaseDiscriminator, SampleVector>(
        PhaseDiscriminator(0.1), in, {1, 9});
    for (std::size_t n = 1; n < out.size(); ++n)
        EXPECT_NEAR(out[n], 0.5, kArctangent);
}

TEST(PilotPhaseLockTest, LocksAfterItsDelayAndLetsGoBelowTheSmallestPilot)
{
    constexpr double kRate = 192000.0;
    constexpr double kSmallest = 0.04; // amplitude
    constexpr double kRipple = 0.1;    // of the level inside a block
    PilotPhaseLock lock(19000.0 / kRate, 50.0 / kRate, kSmallest);
    SampleVector in(512), out;
    std::size_t n = 0;
    const auto angle = [&] { return kTwoPi * 19003.0 / kRate * double(n) + 1.0; };
    const auto feed = [&](double amplitude) {
        for (double &x : in) {
            x = amplitude * std::sin(angle());
            ++n;
        }
        lock.process(in, out);
    };
    while (!lock.locked() && n < 400000)
        feed(0.1);
    EXPECT_GE(n, 76800u); // 20 / bandwidth
    EXPECT_LT(n, 120000u);
    EXPECT_NEAR(lock.pilotLevel(), 0.1, 0.1 * 2.0 * kRipple);

    // The output is the pilot's second harmonic in phase: sin(2 a).
    --n;
    EXPECT_NEAR(out.back(), std::sin(2.0 * angle()), kRipple);
    ++n;

    std::size_t seconds = 0;
    for (const std::size_t end = n + 2 * 192000; n < end;) {
        feed(0.1);
        seconds += lock.ppsEvents().size();
    }
    EXPECT_EQ(seconds, 2u) << "one event for every 19000 periods";
    for (const double amplitude : {1.5 * kSmallest, 0.75 * kSmallest}) {
        for (const std::size_t end = n + 192000; n < end;)
            feed(amplitude);
        EXPECT_EQ(lock.locked(), amplitude > kSmallest) << amplitude;
    }
}
} // namespace
