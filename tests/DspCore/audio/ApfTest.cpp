// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Apf.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

TEST(ApfTest, LowersAllButItsPeak)
{
    constexpr double kSkirtDb = 0.2; // of quality 6, far off
    DspCore::Apf apf;
    apf.init(700.0 / 48000.0, 6.0, 30.0);
    apf.setEnable(true);
    for (const auto &[hz, gainDb] : {std::pair{700.0, 0.0}, {15000.0, -30.0}}) {
        auto signal = test::tone(96000, hz / 48000.0);
        test::run(apf, signal);
        EXPECT_NEAR(test::decibels(test::rms(test::last(signal, 24000))), gainDb, kSkirtDb) << hz;
    }
}
