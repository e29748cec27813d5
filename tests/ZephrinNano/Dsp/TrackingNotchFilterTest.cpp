// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/TrackingNotchFilter.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
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

// The DC block at a distance from its zero, hertz.
std::complex<double> response(double rate, double width, double distance)
{
    const std::complex<double> z1 = std::polar(1.0, -kTwoPi * distance / rate);
    return (1.0 - z1) / (1.0 - pole(rate, width) * z1);
}
} // namespace

TEST(TrackingNotchFilterTest, AStationKeepsWhatTheClosedFormSays)
{
    // The time constant is single precision (6e-8); its share in the response is at most half.
    constexpr double kPoleRounding = 1e-7;
    const struct
    {
        double rate, width, offset, distance;
    } rows[] = {{48000, 50, 10000, 1000}, {48000, 50, 10000, -1000}, {48000, 300, -23999, 1000},
        {48000, 10000, 5000, 20000}, {48000, 50, 23990, 24000}, {192000, 10, 1e-9, 30},
        {192000, 100, -0.0, 100}, {3072000, 50, -1.5e6, 250}, {3072000, 10000, 1.2e6, -30000}};
    for (const auto &row : rows) {
        auto filter = notch(row.rate, row.width, row.offset);
        // Long enough for the transient to fall below rounding.
        const int settled = int(26.0 * row.rate / (kTwoPi * row.width));
        const int length = settled + 1000;
        const double station = (row.offset + row.distance) / row.rate;
        const auto in = test::tone(length, station, 0.7, 0.3);
        const auto out = filtered(filter, in);
        const auto gain = response(row.rate, row.width, row.distance);
        for (int n = settled; n < length; ++n) {
            const auto expected = gain * std::complex<double>(in[n].re, in[n].im);
            ASSERT_NEAR(out[n].re, expected.real(), kPoleRounding) << row.offset << " " << n;
            ASSERT_NEAR(out[n].im, expected.imag(), kPoleRounding) << row.offset << " " << n;
        }
    }
}

TEST(TrackingNotchFilterTest, ACarrierOnTheNotchDiesAwayExponentially)
{
    constexpr double kDrift = 1e-8; // phase against the tones over 3e5 samples, pole rounding
    for (const auto &[rate, width, offset] :
        {std::tuple{48000.0, 10.0, 1234.5}, {48000.0, 50.0, -23999.9}, {3.072e6, 10.0, 1.5e6}}) {
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

TEST(TrackingNotchFilterTest, OutputDoesNotDependOnHowTheStreamIsCut)
{
    constexpr double kRoundOff = 1e-11; // phase summed in another order, 16384 samples
    const int length = TrackingNotchFilter::kMaxBlock;
    auto whole = test::noise(length, 2);
    auto filter = notch(48000, 50, 9876.5);
    const auto cut = test::inBlocks(whole, test::randomCuts(length, 4096, 3),
        [&](COMPLEX *block, int n) { filter.process(block, n); });
    notch(48000, 50, 9876.5).process(whole.data(), length);
    EXPECT_LT(test::maxError(cut, whole), kRoundOff);
}

TEST(TrackingNotchFilterTest, SettingsWaitForTheUpdateWhichForgetsTheHistory)
{
    constexpr double kGone = 1e-6;
    constexpr double kRounding = 1e-9;
    const int length = 48000; // 1 s
    auto filter = notch(48000, 50, 1000);
    filtered(filter, test::tone(length, 1000.0 / 48000.0));
    filter.setFrequency(5000);
    filter.setWidth(500);
    filter.setSampleRate(96000);
    auto onward = test::tone(100, 1000.0 / 48000.0, 1.0, 0.0, length);
    EXPECT_LT(test::rms(filtered(filter, onward)), kGone);

    filter.setFrequency(1000);
    filter.setWidth(50);
    filter.setSampleRate(48000);
    filter.update();
    onward = test::tone(1, 1000.0 / 48000.0, 1.0, 0.0, length + 100);
    EXPECT_NEAR(test::magnitude(filtered(filter, onward)[0]), 1.0, kRounding)
        << "as a first sample";
}
