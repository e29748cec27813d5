// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/TrackingNotchFilter.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using zephrinnano::TrackingNotchFilter;

namespace
{
TrackingNotchFilter notch(double offset)
{
    TrackingNotchFilter filter;
    filter.setSampleRate(48000.0);
    filter.setWidth(50.0);
    filter.setFrequency(offset);
    filter.setEnable(true);
    filter.update();
    return filter;
}

std::vector<COMPLEX> filtered(TrackingNotchFilter &filter, std::vector<COMPLEX> stream)
{
    test::run(filter, stream);
    return stream;
}
} // namespace

// What it does within half the rate is tested as a cascade of one.
TEST(TrackingNotchFilterTest, OutsideHalfTheRateOrSwitchedOffItPassesTheStream)
{
    const auto in = test::noise(4096, 1);
    for (const double offset : {24000.0, -24000.0, 24000.1, -1e6}) {
        auto filter = notch(offset);
        EXPECT_EQ(filtered(filter, in), in) << offset;
    }
    for (const double offset : {23999.99, -23999.99}) {
        auto filter = notch(offset);
        EXPECT_NE(filtered(filter, in), in) << offset;
        filter.setEnable(false);
        EXPECT_EQ(filtered(filter, in), in) << offset;
    }
    TrackingNotchFilter fresh;
    EXPECT_EQ(filtered(fresh, in), in);
}
