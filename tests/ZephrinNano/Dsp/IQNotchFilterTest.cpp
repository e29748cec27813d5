// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/IQNotchFilter.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace
{
constexpr double kDds = 7.1e6;
constexpr double kRate = 48000.0;

// A run of a carrier as the device delivers it while tuned to `dds`.
std::vector<COMPLEX> carrier(double hz, double dds, double rate, int length, int first = 0)
{
    return test::tone(length, (hz - dds) / rate, 1.0, 0.0, first);
}

std::vector<COMPLEX> filtered(IQNotchFilter &notch, std::vector<COMPLEX> stream)
{
    for (std::size_t at = 0; at < stream.size(); at += 512)
        notch.process(&stream[at], int(std::min<std::size_t>(512, stream.size() - at)));
    return stream;
}

// Level of the last part of a filtered carrier of 1, decibels.
double remains(IQNotchFilter &notch, double hz, double dds, double rate, int length)
{
    const auto out = filtered(notch, carrier(hz, dds, rate, length));
    return test::decibels(test::rms({out.end() - length / 8, out.end()}));
}

void set(IQNotchFilter &notch, unsigned long index, double hz, double width)
{
    notch.setEnable(index, true);
    notch.setFrequency(index, hz);
    notch.setWidth(index, width);
}
} // namespace

// A station 1 kHz away is spared up to a width of 600 Hz: at three half widths it loses
// 10 log10(1 + 1/9) = 0.46 dB. At 48 kHz the rise towards half the rate gives 0.2 dB of it back.
constexpr double kGoneDb = -60.0;
constexpr double kSparedDb = 0.5;

TEST(IQNotchFilterTest, TuningMovesTheNotchAndItsFrequencyStays)
{
    const double hz = 7103210.0;
    for (const auto &[rate, width] :
        {std::pair{48000.0, 100.0}, {768000.0, 20.0}, {3.072e6, 600.0}}) {
        IQNotchFilter notch(8);
        notch.setSampleRate(rate);
        notch.setActive(true);
        set(notch, 3, hz, width);
        const int length = int(1.3 * rate / (width / 2.0)); // the carrier is 70 dB down
        for (const double dds : {7.1e6, 7.1e6 - 0.4 * rate, 7.1e6 + 0.45 * rate, 7.1e6}) {
            notch.setDds(dds);
            EXPECT_LT(remains(notch, hz, dds, rate, length), kGoneDb) << rate << " " << dds;
            for (const double station : {hz - 1000.0, hz + 1000.0})
                EXPECT_NEAR(remains(notch, station, dds, rate, length), 0.0, kSparedDb) << rate;
        }
    }
}

TEST(IQNotchFilterTest, EachFilterThatIsOnTakesItsFrequency)
{
    IQNotchFilter notch(3); // a fresh list is for a stream at 48 kHz
    notch.setDds(kDds);
    set(notch, 0, kDds + 5000.0, 200.0);
    set(notch, 1, kDds - 20000.0, 200.0);
    set(notch, 2, kDds + 12000.0, 200.0);
    notch.setEnable(1, false);

    const auto noise = test::noise(1000, 1);
    EXPECT_EQ(filtered(notch, noise), noise) << "the list is not active";
    notch.setActive(true);
    EXPECT_LT(remains(notch, kDds + 5000.0, kDds, kRate, 4800), kGoneDb);
    EXPECT_NEAR(remains(notch, kDds - 20000.0, kDds, kRate, 4800), 0.0, kSparedDb) << "off";
    EXPECT_LT(remains(notch, kDds + 12000.0, kDds, kRate, 4800), kGoneDb);
}

TEST(IQNotchFilterTest, AChangeRestartsTheHistoryAndARepetitionDoesNot)
{
    const struct
    {
        const char *name;
        std::function<void(IQNotchFilter &)> call;
        bool restarts;
    } rows[] = {
        {"another dds", [](auto &n) { n.setDds(kDds + 0.001); }, true},
        {"the same dds", [](auto &n) { n.setDds(kDds * (1.0 + 1e-13)); }, false},
        {"another rate", [](auto &n) { n.setSampleRate(kRate + 0.001); }, true},
        {"the same rate", [](auto &n) { n.setSampleRate(kRate * (1.0 + 1e-13)); }, false},
        {"another frequency", [](auto &n) { n.setFrequency(1, kDds + 1000.001); }, true},
        {"the same frequency", [](auto &n) { n.setFrequency(1, kDds + 1000.0); }, false},
        {"another filter's", [](auto &n) { n.setFrequency(0, kDds + 1.0); }, false},
        {"the same width", [](auto &n) { n.setWidth(1, 100.0); }, true},
        {"update", [](auto &n) { n.update(); }, true},
        {"switches",
            [](auto &n) {
                n.setEnable(1, true);
                n.setActive(true);
            },
            false},
    };
    for (const auto &row : rows) {
        IQNotchFilter notch(2);
        notch.setSampleRate(kRate);
        notch.setDds(kDds);
        notch.setActive(true);
        set(notch, 1, kDds + 1000.0, 100.0);
        const int gone = 9600;
        filtered(notch, carrier(kDds + 1000.0, kDds, kRate, gone));
        row.call(notch);
        const auto next = filtered(notch, carrier(kDds + 1000.0, kDds, kRate, 1, gone));
        // A filter without history lets its first sample pass as it is.
        constexpr double kFaded = 1e-6;
        EXPECT_NEAR(test::magnitude(next[0]), row.restarts ? 1.0 : 0.0, kFaded) << row.name;
    }
}

TEST(IQNotchFilterTest, HalfTheWidthIsLimitedAndTheListEnds)
{
    IQNotchFilter notch(8);
    for (const auto &[width, half] : {std::pair{10.0, 10.0}, {-5.0, 10.0}, {100.0, 50.0},
             {20000.0, 10000.0}, {100000.0, 10000.0}}) {
        notch.setWidth(7, width);
        EXPECT_EQ(notch.width(7), half) << width;
    }
    EXPECT_THROW(notch.setEnable(8, true), std::out_of_range);
    EXPECT_THROW(notch.setFrequency(8, 1e6), std::out_of_range);
    EXPECT_THROW(notch.setWidth(8, 50.0), std::out_of_range);
}
