// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/Cuts.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::DownConverter;

namespace
{
constexpr double kRoundOff = 1e-11; // phase summed in another order, some thousand samples

std::vector<COMPLEX> mixed(
    double osc, double rit, const std::vector<COMPLEX> &stream, const std::vector<int> &cuts)
{
    DownConverter mixer;
    mixer.setOsc(osc);
    mixer.setRit(rit);
    return test::inBlocks(stream, cuts, [&](COMPLEX *block, int n) { mixer.process(block, n); });
}
} // namespace

TEST(DownConverterTest, AStationLandsBelowByOscillatorAndRit)
{
    // oscillator, RIT, and how far a station moves down: the sum, at most half the rate
    const double cases[][3] = {{0.1234, 0.0, 0.1234}, {-0.2, 0.0, -0.2}, {0.1, 0.05, 0.15},
        {0.1, -0.3, -0.2}, {0.4, 0.4, 0.5}, {-0.4, -0.4, -0.5}, {0.0, 0.0, 0.0}, {0.5, 0.0, 0.5},
        {-0.5, 0.0, -0.5}, {7.0, 0.0, 0.5}, {0.0, -0.001, -0.001}};
    for (const auto &[osc, rit, shift] : cases) {
        const auto station = test::tone(4096, 0.3, 0.7, 0.4);
        const auto expected = test::tone(4096, 0.3 - shift, 0.7, 0.4);
        EXPECT_LT(test::maxError(mixed(osc, rit, station, {4096}), expected), kRoundOff)
            << osc << " " << rit;
    }
}

TEST(DownConverterTest, FrequenciesAreStoredWithTheSignTurned)
{
    const double cases[][2] = {{0.25, -0.25}, {-0.25, 0.25}, {-3.0, 0.5}, {3.0, -0.5}, {0.0, 0.0}};
    for (const auto &[set, stored] : cases) {
        DownConverter mixer;
        mixer.setOsc(set);
        mixer.setRit(set / 2.0);
        EXPECT_EQ(mixer.osc(), stored);
        EXPECT_EQ(mixer.rit(), std::clamp(-set / 2.0, -0.5, 0.5));
    }
}

TEST(DownConverterTest, OutputDoesNotDependOnHowTheStreamIsCut)
{
    const auto stream = test::noise(4096, 7);
    EXPECT_LT(test::maxError(mixed(0.1234, 0.01, stream, {4096}),
                  mixed(0.1234, 0.01, stream, test::randomCuts(4096, 1000, 8))),
        kRoundOff);
}

TEST(DownConverterTest, ResetRestartsTheToneAtItsFrequency)
{
    DownConverter mixer;
    mixer.setOsc(0.123);
    auto first = test::tone(100, 0.0);
    mixer.process(first.data(), 100);
    auto onward = test::tone(100, 0.0);
    mixer.process(onward.data(), 100);
    mixer.reset();
    auto again = test::tone(100, 0.0);
    mixer.process(again.data(), 100);
    EXPECT_EQ(again, first);
    EXPECT_NE(onward, first);
}

TEST(DownConverterTest, AWrongBufferIsReported)
{
    DownConverter mixer;
    COMPLEX sample{1.0, 2.0};
    mixer.setOsc(0.25);
    test::LogCapture log;
    mixer.process(nullptr, 8);
    mixer.process(&sample, 0);
    mixer.process(&sample, -3);
    const auto warnings =
        log.warnings().filter("DownConverter::process").filter("): Incorrect input parameters!");
    ASSERT_EQ(warnings.size(), 3);
    EXPECT_TRUE(warnings[2].contains("-3"));
    EXPECT_EQ(sample, (COMPLEX{1.0, 2.0}));
}
