// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Apf.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

TEST(ApfTest, LowersAllButItsPeak)
{
    constexpr double kRate = 48000.0;
    constexpr double kPeakDb = 0.05;
    constexpr double kFarDb = 0.5; // the skirt of quality 1 still lifts a little
    struct Row
    {
        double frequency, quality, gainDb;
    };
    DspCore::Apf apf;
    apf.setEnable(true);
    for (const Row row : {Row{500, 1, 12}, Row{700, 6, 30}, Row{1200, 3, 20}}) {
        if (row.gainDb != 12.0) // the first row is what the constructor sets
            apf.init(row.frequency / kRate, row.quality, row.gainDb);
        const auto gainDb = [&](double hz) {
            std::vector<COMPLEX> signal = test::tone(96000, hz / kRate);
            test::run(apf, signal);
            return test::decibels(
                test::magnitude(test::component(test::last(signal, 24000), hz / kRate)));
        };
        EXPECT_NEAR(gainDb(row.frequency), 0.0, kPeakDb);
        EXPECT_NEAR(gainDb(15000.0), -row.gainDb, kFarDb);
    }
}
