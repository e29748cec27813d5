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
constexpr double kSingleRoundOff = 2e-6;

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

// Runs a filter over a stream that is cut into blocks of the given sizes in turn.
template <typename Vector, typename Filter, typename Out = Vector>
Out inBlocks(Filter &filter, const Vector &in, const std::vector<std::size_t> &sizes)
{
    Out all, out;
    std::size_t at = 0;
    for (std::size_t i = 0; at < in.size(); ++i) {
        const std::size_t size = std::min(sizes[i % sizes.size()], in.size() - at);
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

TEST(DownsampleFilterTest, FractionalFollowsTheInterpolatedFilterHoweverTheStreamIsCut)
{
    constexpr int kOrder = 32;
    constexpr double kCutoff = 0.1;
    const SampleVector in = noise(2000);
    for (const double factor : {1.0, 4.0, 2.5, 192000.0 / 44100.0}) {
        SampleVector expected;
        for (int i = 0;; ++i) {
            const double position = i * factor;
            const int whole = static_cast<int>(position);
            if (whole >= 2000)
                break;
            double y = 0.0;
            for (int j = 0; j <= kOrder; ++j) {
                // A zero stands before the first and after the last tap.
                const double c = (1.0 - (position - whole)) * tap(kOrder, kCutoff, j - 1)
                    + (position - whole) * tap(kOrder, kCutoff, j);
                y += whole - j < 0 ? 0.0 : c * in[std::size_t(whole - j)];
            }
            expected.push_back(y);
        }
        for (const auto &sizes : {std::vector<std::size_t>{2000}, {512}, {7, 1, 100, 33}}) {
            DownsampleFilter filter(kOrder, kCutoff, factor, false);
            EXPECT_LT(test::maxError(inBlocks(filter, in, sizes), expected), 1e-9) << factor;
        }
    }
}

TEST(DownsampleFilterTest, WholeFactorsTakeEveryNthSample)
{
    constexpr int kOrder = 16;
    const SampleVector in = noise(500);
    for (const int factor : {1, 2, 5}) {
        SampleVector expected;
        for (int p = 0; p < 500; p += factor) {
            double y = 0.0;
            for (int j = 1; j <= kOrder && j <= p; ++j)
                y += tap(kOrder, 0.2, j - 1) * in[std::size_t(p - j)];
            expected.push_back(y);
        }
        for (const auto &sizes : {std::vector<std::size_t>{500}, {3, 50, 1}}) {
            DownsampleFilter filter(kOrder, 0.2, factor, true);
            EXPECT_LT(test::maxError(inBlocks(filter, in, sizes), expected), kRoundOff) << factor;
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
    for (const auto &sizes : {std::vector<std::size_t>{300}, {4, 1, 9, 60}}) {
        LowPassFilterFirIQ filter(10, 0.26);
        EXPECT_LT(test::maxError(widened(inBlocks(filter, in, sizes)), expected), kSingleRoundOff);
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
            kSingleRoundOff)
            << shift;
    }
}

double responseAt(auto &filter, double frequency)
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
    HighPassFilterIir highPass(0.01);
    EXPECT_NEAR(responseAt(highPass, 0.01), std::sqrt(0.5), kMatchedPoles);
    HighPassFilterIir pass(0.01);
    EXPECT_NEAR(responseAt(pass, 0.25), 1.0, kMatchedPoles);
    HighPassFilterIir stop(0.01);
    EXPECT_LT(responseAt(stop, 0.001), 0.011);

    LowPassFilterIir lowPass(0.01);
    EXPECT_NEAR(responseAt(lowPass, 0.01), std::sqrt(0.5), kMatchedPoles);
    LowPassFilterIir direct(0.01);
    EXPECT_NEAR(responseAt(direct, 0.0001), 1.0, kMatchedPoles);
    LowPassFilterIir gone(0.01);
    EXPECT_NEAR(test::decibels(responseAt(gone, 0.04)), -48.0, 1.0); // 24 dB an octave
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
    PhaseDiscriminator discriminator(0.1);
    const IQSampleVector in = narrowed(test::tone(100, 0.05, 0.7));
    const SampleVector out =
        inBlocks<IQSampleVector, PhaseDiscriminator, SampleVector>(discriminator, in, {1, 9});
    for (std::size_t n = 1; n < out.size(); ++n)
        EXPECT_NEAR(out[n], 0.5, 0.005); // the arctangent's own error
}

TEST(PilotPhaseLockTest, LocksAfterItsDelayAndLetsGoWithoutPilot)
{
    constexpr double kRate = 192000.0;
    constexpr std::size_t kBlock = 512;
    PilotPhaseLock lock(19000.0 / kRate, 50.0 / kRate, 0.04);
    SampleVector in(kBlock), out;
    std::size_t n = 0;
    const auto feed = [&](double amplitude) {
        for (double &x : in)
            x = amplitude * std::sin(kTwoPi * 19003.0 / kRate * double(n++) + 1.0);
        lock.process(in, out);
    };
    while (!lock.locked() && n < 400000)
        feed(0.1);
    EXPECT_GE(n, 76800u); // 20 / bandwidth
    EXPECT_LT(n, 120000u);
    EXPECT_NEAR(lock.pilotLevel(), 0.1, 0.02);

    // The output is the pilot's second harmonic in phase: sin(2 a).
    const double angle = kTwoPi * 19003.0 / kRate * double(n - 1) + 1.0;
    EXPECT_NEAR(out.back(), std::sin(2.0 * angle), 0.1);

    std::size_t seconds = 0;
    for (const std::size_t end = n + 2 * 192000; n < end;) {
        feed(0.1);
        seconds += lock.ppsEvents().size();
    }
    EXPECT_EQ(seconds, 2u) << "one event for every 19000 periods";
    while (lock.locked() && n < 1000000)
        feed(0.0);
    EXPECT_FALSE(lock.locked());
}
} // namespace
