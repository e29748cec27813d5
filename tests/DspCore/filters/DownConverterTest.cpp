// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DownConverter.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

TEST(DownConverterTest, AStationLandsBelowByOscillatorAndRit)
{
    constexpr double kRoundOff = 1e-11; // of the phase after some thousand samples
    // Oscillator, RIT, and how far a station moves down: each and the sum at most half the rate.
    const double cases[][3] = {{0.1234, 0.0, 0.1234}, {0.1, -0.3, -0.2}, {0.4, 0.4, 0.5},
        {-0.4, -0.4, -0.5}, {7.0, 0.0, 0.5}, {0.1, -3.0, -0.4}, {-3.0, 3.0, 0.0}};
    for (const auto &[osc, rit, shift] : cases) {
        DspCore::DownConverter mixer;
        mixer.setOsc(osc);
        mixer.setRit(rit);
        EXPECT_EQ(mixer.osc(), -std::clamp(osc, -0.5, 0.5)) << "stored with the sign turned";
        auto station = test::tone(4096, 0.3, 0.7, 0.4);
        const auto expected = test::tone(4096, 0.3 - shift, 0.7, 0.4);
        mixer.process(station.data(), 2048);
        mixer.skip(1000); // the tone runs on over what is skipped
        mixer.process(&station[3048], 1048);
        std::copy_n(&expected[2048], 1000, &station[2048]);
        EXPECT_LT(test::maxError(station, expected), kRoundOff) << osc << " " << rit;
    }
}
