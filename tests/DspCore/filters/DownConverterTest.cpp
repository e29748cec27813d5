// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DownConverter.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::DownConverter;

namespace
{
constexpr double kRoundOff = 1e-11; // of the phase after some thousand samples

std::vector<COMPLEX> mixed(double osc, double rit, std::vector<COMPLEX> station)
{
    DownConverter mixer;
    mixer.setOsc(osc);
    mixer.setRit(rit);
    mixer.process(station.data(), int(station.size()));
    return station;
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
        EXPECT_LT(test::maxError(mixed(osc, rit, station), expected), kRoundOff)
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
