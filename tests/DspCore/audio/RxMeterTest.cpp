// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/RxMeter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
TEST(RxMeterTest, TellsPartsApartAndSmoothsTheirSumAtAnyLengthAndLevel)
{
    constexpr double kRoundOffDb = 1e-9;
    for (const int length : {1, 7, 8, 9, 100, 4096}) {
        for (const int db : {0, -50, -110}) {
            const double size = std::pow(10.0, db / 20.0);
            const std::vector<COMPLEX> block(std::size_t(length), COMPLEX{size, -0.1 * size});
            DspCore::RxMeter meter;
            meter.process(block.data(), length);
            meter.process(nullptr, 64); // no block, no reading
            meter.process(block.data(), 0);
            EXPECT_NEAR(meter.adcRe(), db, kRoundOffDb) << length;
            EXPECT_NEAR(meter.adcIm(), db - 20.0, kRoundOffDb) << length;
            const double level = db + 10.0 * std::log10(1.01) - 10.0;
            EXPECT_NEAR(meter.dbm(), 0.95 * -120.0 + 0.05 * level, kRoundOffDb) << length;
        }
    }
    DspCore::RxMeter meter;
    const std::vector<COMPLEX> silence(64, COMPLEX{0.0, 0.0});
    meter.process(silence.data(), 64);
    meter.process(test::noise(64, 1).data(), 64);
    EXPECT_EQ(meter.dbm(), -INFINITY) << "silence reads so for good";
}
} // namespace
