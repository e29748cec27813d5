// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Dse.h"
#include "../filters/Cuts.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace
{
constexpr double kRate = 48000.0;

TEST(DseTest, PartsTheEarsByPitch)
{
    constexpr double kPassed = 0.9;
    constexpr double kStopped = 0.01;
    DspCore::Dse dse;
    dse.setTaps(1000);
    dse.setPitch(700.0);
    dse.setEnable(true);
    for (const bool swap : {false, true}) {
        dse.setSwap(swap);
        for (const double hz : {350.0, 1050.0}) {
            dse.clear();
            const std::vector<COMPLEX> signal = test::inBlocks(test::tone(48000, hz / kRate),
                std::vector<int>(100, 480), [&](COMPLEX *x, int n) { dse.process(x, n); });
            double left = 0.0;
            double right = 0.0;
            for (std::size_t n = 24000; n < signal.size(); ++n) {
                left = std::max(left, std::abs(signal[n].re));
                right = std::max(right, std::abs(signal[n].im));
            }
            const bool isLeft = (hz < 700.0) != swap;
            EXPECT_GT(isLeft ? left : right, kPassed) << hz;
            EXPECT_LT(isLeft ? right : left, kStopped) << hz;
        }
    }
}

TEST(DseTest, ReportsBadInputEvenWhenSwitchedOff)
{
    const test::LogCapture log;
    DspCore::Dse dse;
    dse.process(nullptr, 4);
    COMPLEX x{1.0, 2.0};
    dse.process(&x, 0);
    EXPECT_EQ(log.warnings().filter("void DspCore::Dse::process(COMPLEX *, int)").size(), 2);
    EXPECT_TRUE(log.warned("): Incorrect input parameters!"));
    dse.process(&x, 1);
    EXPECT_EQ(log.warnings().size(), 2);
    EXPECT_EQ(x, (COMPLEX{1.0, 2.0}));
}
} // namespace
