// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/Vm_Clipper.h"

#include <gtest/gtest.h>

namespace
{
using Clipper = Velmora::CppDsp::Vm_Clipper<double>;

constexpr double kRoundOff = 1e-9;

double through(const Clipper &clipper, double value)
{
    COMPLEX x{0.0, value};
    clipper.process(&x, 1);
    return x.im;
}

TEST(ClipperTest, LimitsHardOrFollowsItsKneeBetweenItsGains)
{
    for (const auto &[in, out] : {std::pair{0.5, 0.5}, {1.0, 1.0}, {1.5, 1.0}, {-9.0, -1.0}})
        EXPECT_EQ(through(Clipper(), in), out);
    const Clipper soft(true, 1);
    const std::pair<double, double> rows[] = {// dB in, dB out
        {-40, -40}, {-2, -2}, {0, -0.5}, {1, -0.125}, {2, 0}, {20, 0}};
    for (const auto &[inDb, outDb] : rows) {
        const double in = std::pow(10.0, inDb / 20.0);
        EXPECT_NEAR(test::decibels(through(soft, in)), outDb, kRoundOff) << inDb;
        EXPECT_NEAR(through(soft, -in), -through(soft, in), kRoundOff) << inDb;
    }
    EXPECT_EQ(through(soft, 0.0), 0.0);
    EXPECT_NEAR(through(Clipper(true, 0, 20.0, 6.0), 5.0), 0.5 * std::pow(10.0, 0.3), kRoundOff);
    EXPECT_EQ(through(Clipper(false), 5.0), 5.0);
}

} // namespace
