// SPDX-License-Identifier: GPL-3.0-or-later
// Each repair, off: the dead end that it mends; on: the way out.
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using DspCore::Modulation;
using DspCore::Receiver;
using DspCore::ReceiverRepairs;

namespace
{
constexpr int kInRate = 192000; // Hz, of a new receiver
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Samples at the input rate.
constexpr std::size_t ms(int milliseconds)
{
    return std::size_t(milliseconds) * kInRate / 1000;
}

double dbmOfA(const Receiver &receiver)
{
    double a = 0.0;
    double b = 0.0;
    receiver.getDbm(0, a, b);
    return a;
}

TEST(ReceiverRepairsTest, MeterComesBackAfterSilenceAndNoNumbers)
{
    constexpr double kSettledDb = 0.1;
    const std::vector<COMPLEX> carrier(ms(1000), COMPLEX{0.1, 0.0});
    for (const double nothing : {0.0, kNan}) {
        for (const bool repaired : {false, true}) {
            Receiver receiver;
            receiver.setRepairs({.meter = repaired});
            receiver.setBandFilterIf(0, -3000, 3000);
            test::setMode(receiver, Modulation::DSB);
            receiver.setSqlEnable(0, true);
            receiver.setSqlValue(0, -80);
            test::feed(receiver, carrier);
            const double before = dbmOfA(receiver);
            ASSERT_NEAR(before, -33.3, kSettledDb);
            test::feed(receiver, std::vector<COMPLEX>(ms(48), COMPLEX{nothing, 0.0}));
            const auto heard = test::feed(receiver, carrier);
            EXPECT_EQ(std::isfinite(dbmOfA(receiver)), repaired) << nothing;
            if (repaired) {
                EXPECT_NEAR(dbmOfA(receiver), before, kSettledDb);
            }
            if (nothing == 0.0) {
                EXPECT_EQ(heard.audio.back().re != 0.0, repaired) << "the squelch goes by it";
            }
        }
    }
}
} // namespace
