// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/Vm_Binaural.h"
#include "DspCore/audio/Vm_Clipper.h"

#include <gtest/gtest.h>

namespace
{
using Clipper = Velmora::CppDsp::Vm_Clipper<double>;
using Binaural = Velmora::CppDsp::Vm_Binaural<double>;

double through(const Clipper &clipper, double value)
{
    COMPLEX x{value, 0.0};
    clipper.process(&x, 1);
    return x.re;
}

constexpr double kRoundOff = 1e-12;

TEST(ClipperTest, LimitsHardAtFullScale)
{
    std::vector<COMPLEX> block = {{0.5, -0.5}, {1.0, -1.0}, {1.5, -3.0}, {-9.0, 1.0000001}};
    Clipper().process(block.data(), static_cast<unsigned>(block.size()));
    EXPECT_EQ(block, (std::vector<COMPLEX>{{0.5, -0.5}, {1.0, -1.0}, {1.0, -1.0}, {-1.0, 1.0}}));
}

TEST(ClipperTest, SoftClipFollowsItsKneeBetweenItsGains)
{
    constexpr double kRoundOffDb = 1e-9;
    const Clipper clipper(true, 1);
    const std::pair<double, double> rows[] = {// dB in, dB out
        {-40, -40}, {-2.001, -2.001}, {-2, -2}, {0, -0.5}, {1, -0.125}, {2, 0}, {6, 0}, {20, 0}};
    for (const auto &[inDb, outDb] : rows) {
        const double in = std::pow(10.0, inDb / 20.0);
        EXPECT_NEAR(test::decibels(through(clipper, in)), outDb, kRoundOffDb) << inDb;
        EXPECT_NEAR(through(clipper, -in), -through(clipper, in), kRoundOff) << inDb;
    }
    EXPECT_EQ(through(clipper, 0.0), 0.0);
    EXPECT_NEAR(through(Clipper(true, 0, 20.0, 6.0), 5.0), 0.5 * std::pow(10.0, 0.3), kRoundOff);
    EXPECT_EQ(through(Clipper(false), 5.0), 5.0);
}

TEST(BinauralTest, DelaysTheRightEarOnly)
{
    const std::vector<COMPLEX> in = test::noise(2000, 5);
    Binaural binaural;
    binaural.setDelaySamples(480);
    std::vector<COMPLEX> out = in;
    binaural.process(out.data(), out.size());
    EXPECT_EQ(out, in) << "off passes through";

    binaural.setOn(true);
    binaural.process(out.data(), 700); // cut anywhere
    binaural.process(out.data() + 700, 1300);
    for (std::size_t n = 0; n < out.size(); ++n) {
        ASSERT_EQ(out[n].re, in[n].re) << n;
        ASSERT_EQ(out[n].im, n < 480 ? 0.0 : in[n - 480].im) << n;
    }
}

TEST(BinauralTest, SwitchingEmptiesTheLineAndKeepsItsLength)
{
    Binaural binaural;
    binaural.setDelay(30.0); // limited to 20 ms
    EXPECT_EQ(binaural.delaySamples(), 960u);
    binaural.setOn(true);
    std::vector<COMPLEX> block(960, COMPLEX{1.0, 1.0});
    binaural.process(block.data(), block.size());
    binaural.setOn(false);
    binaural.setOn(true);
    block.assign(961, COMPLEX{2.0, 2.0});
    binaural.process(block.data(), block.size());
    EXPECT_EQ(block[959].im, 0.0);
    EXPECT_EQ(block[960].im, 2.0);
}
} // namespace
