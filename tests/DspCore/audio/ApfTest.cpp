// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Apf.h"
#include "../filters/Cuts.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace
{
constexpr double kRate = 48000.0;

TEST(ApfTest, BadInputIsPassedOverInSilence)
{
    const test::LogCapture log;
    DspCore::Apf apf;
    apf.setEnable(true);
    COMPLEX x{1.0, 2.0};
    apf.process(nullptr, 4);
    apf.process(&x, 0);
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_EQ(x, (COMPLEX{1.0, 2.0}));
}

TEST(ApfTest, LowersAllButItsPeak)
{
    constexpr double kToleranceDb = 0.05;
    constexpr double kFarToleranceDb = 0.5; // the skirt of quality 1 still lifts a little
    DspCore::Apf apf;
    apf.setEnable(true);
    struct Row
    {
        double frequency, quality, gainDb;
    };
    for (const Row row : {Row{500, 1, 12}, Row{700, 6, 30}, Row{1200, 3, 20}}) {
        if (row.gainDb != 12.0) // the first row is what the constructor sets
            apf.init(row.frequency / kRate, row.quality, row.gainDb);
        const auto gainDb = [&](double hz) {
            const std::vector<COMPLEX> signal = test::inBlocks(test::tone(96000, hz / kRate),
                std::vector<int>(200, 480), [&](COMPLEX *x, int n) { apf.process(x, n); });
            return test::decibels(
                test::magnitude(test::component({signal.end() - 24000, signal.end()}, hz / kRate)));
        };
        EXPECT_NEAR(gainDb(row.frequency), 0.0, kToleranceDb);
        EXPECT_NEAR(gainDb(15000.0), -row.gainDb, kFarToleranceDb);
    }
}
} // namespace
