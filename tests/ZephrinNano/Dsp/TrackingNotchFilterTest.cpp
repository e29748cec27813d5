// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/TrackingNotchFilter.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>

using zephrinnano::TrackingNotchFilter;

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;

TrackingNotchFilter notch(double rate, double width, double offset)
{
    TrackingNotchFilter filter;
    filter.setSampleRate(rate);
    filter.setWidth(width);
    filter.setFrequency(offset);
    filter.setEnable(true);
    filter.update();
    return filter;
}

std::vector<COMPLEX> filtered(TrackingNotchFilter &filter, std::vector<COMPLEX> stream)
{
    for (std::size_t at = 0; at < stream.size(); at += 4096)
        filter.process(&stream[at], int(std::min<std::size_t>(4096, stream.size() - at)));
    return stream;
}

double pole(double rate, double width)
{
    return std::exp(-kTwoPi * width / rate);
}
} // namespace

TEST(TrackingNotchFilterTest, ACarrierOnTheNotchDiesAwayExponentially)
{
    constexpr double kDrift = 1e-8; // phase against the tones over 3e5 samples, pole rounding
    for (const auto &[rate, width, offset] :
        {std::tuple{48000.0, 50.0, -23999.9}, {3.072e6, 10.0, 1.5e6}}) {
        auto filter = notch(rate, width, offset);
        const int at60dB = int(std::ceil(1.1 / width * rate));
        const auto out = filtered(filter, test::tone(at60dB + 1, offset / rate));
        for (int n = 0; n <= at60dB; ++n)
            ASSERT_NEAR(test::magnitude(out[n]), std::pow(pole(rate, width), n),
                n * kDrift / at60dB + kDrift)
                << rate << " " << offset << " " << n;
    }
}

TEST(TrackingNotchFilterTest, OutsideHalfTheRateOrSwitchedOffItPassesTheStream)
{
    const auto in = test::noise(4096, 1);
    for (const double offset : {24000.0, -24000.0, 24000.1, -1e6}) {
        auto filter = notch(48000, 50, offset);
        EXPECT_EQ(filtered(filter, in), in) << offset;
    }
    for (const double offset : {23999.99, -23999.99}) {
        auto filter = notch(48000, 50, offset);
        EXPECT_NE(filtered(filter, in), in) << offset;
        filter.setEnable(false);
        EXPECT_EQ(filtered(filter, in), in) << offset;
    }
    TrackingNotchFilter fresh;
    EXPECT_EQ(filtered(fresh, in), in);
}
