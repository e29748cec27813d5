// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Dse.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

TEST(DseTest, PartsTheEarsByPitch)
{
    constexpr double kPassed = 0.7; // root mean square of an ear, of 0.71
    constexpr double kStopped = 0.01;
    DspCore::Dse dse;
    dse.setTaps(1000);
    dse.setPitch(700.0);
    dse.setEnable(true);
    for (const bool swap : {false, true}) {
        dse.setSwap(swap);
        for (const double hz : {350.0, 1050.0}) {
            dse.clear();
            std::vector<COMPLEX> signal = test::tone(48000, hz / 48000.0);
            test::run(dse, signal);
            signal = test::last(signal, 24000);
            const double left = test::rms(test::ear(signal, &COMPLEX::re));
            const double right = test::rms(test::ear(signal, &COMPLEX::im));
            const bool isLeft = (hz < 700.0) != swap;
            EXPECT_GT(isLeft ? left : right, kPassed) << hz;
            EXPECT_LT(isLeft ? right : left, kStopped) << hz;
        }
    }
}
