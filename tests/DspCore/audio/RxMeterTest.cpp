// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/RxMeter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
TEST(RxMeterTest, ReadsTheLevelOverAHundredDecibels)
{
    constexpr double kToleranceDb = 0.01;
    for (const int db : {0, -50, -110}) {
        DspCore::RxMeter meter;
        // Whole periods, so that both parts carry half of the power.
        const std::vector<COMPLEX> block = test::tone(512, 8.0 / 512.0, std::pow(10.0, db / 20.0));
        for (int n = 0; n < 300; ++n)
            meter.process(block.data(), 512);
        EXPECT_NEAR(meter.dbm(), db - 10.0, kToleranceDb);
        EXPECT_NEAR(meter.adcRe(), db - 3.0103, kToleranceDb);
        EXPECT_NEAR(meter.adcIm(), db - 3.0103, kToleranceDb);
    }
}

TEST(RxMeterTest, PartsAreToldApartAtAnyLength)
{
    constexpr double kRoundOffDb = 1e-9;
    for (const int length : {1, 7, 8, 9, 100, 4096}) {
        const std::vector<COMPLEX> block(static_cast<std::size_t>(length), COMPLEX{0.1, -0.01});
        DspCore::RxMeter meter;
        meter.process(block.data(), length);
        EXPECT_NEAR(meter.adcRe(), -20.0, kRoundOffDb) << length;
        EXPECT_NEAR(meter.adcIm(), -40.0, kRoundOffDb) << length;
        const double level = 10.0 * std::log10(0.01 + 0.0001) - 10.0;
        EXPECT_NEAR(meter.dbm(), 0.95 * -120.0 + 0.05 * level, kRoundOffDb) << length;
        meter.process(nullptr, 64);
        meter.process(block.data(), 0);
        EXPECT_NEAR(meter.adcIm(), -40.0, kRoundOffDb) << "no block, no reading";
    }
}

TEST(RxMeterTest, SilenceReadsMinusInfinityForGood)
{
    DspCore::RxMeter meter;
    const std::vector<COMPLEX> silence(64, COMPLEX{0.0, 0.0});
    const std::vector<COMPLEX> loud(64, COMPLEX{1.0, 1.0});
    meter.process(silence.data(), 64);
    EXPECT_EQ(meter.adcRe(), -INFINITY);
    meter.process(loud.data(), 64);
    EXPECT_EQ(meter.dbm(), -INFINITY);
    EXPECT_EQ(meter.adcRe(), 0.0);
}
} // namespace
